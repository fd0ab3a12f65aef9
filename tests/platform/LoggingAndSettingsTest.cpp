// Logging through Qt categories and the settings store over QSettings.

#include <QLoggingCategory>
#include <QString>
#include <QTemporaryDir>

#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "velcoredata/platform/LogMessage.h"
#include "velcoredata/platform/TSettings.h"

namespace {

struct Captured {
  QtMsgType type;
  std::string category;
  std::string text;
};
std::vector<Captured> g_captured;

void Capture(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  g_captured.push_back({type, context.category ? context.category : "", message.toStdString()});
}

class LogMessageTest : public ::testing::Test {
 protected:
  void SetUp() override {
    g_captured.clear();
    m_previous = qInstallMessageHandler(&Capture);
  }
  void TearDown() override {
    qInstallMessageHandler(m_previous);
    QLoggingCategory::setFilterRules(QString());
  }
  QtMessageHandler m_previous = nullptr;
};

TEST_F(LogMessageTest, WritesUnderTheSubsystemCategoryWithItsSeverity) {
  LogMessage(LogArea::DateTime, LogSeverity::Warning, TString(u"invalid datetime #0300-02-30#"));
  LogMessage(LogArea::Collation, LogSeverity::Error, "sort option not handled");
  ASSERT_EQ(g_captured.size(), 2u);
  EXPECT_EQ(g_captured[0].category, "velcoredata.datetime");
  EXPECT_EQ(g_captured[0].type, QtWarningMsg);
  EXPECT_EQ(g_captured[0].text, "invalid datetime #0300-02-30#");
  EXPECT_EQ(g_captured[1].category, "velcoredata.collation");
  EXPECT_EQ(g_captured[1].type, QtCriticalMsg);
  EXPECT_STREQ(LogCategoryName(LogArea::StringPool), "velcoredata.stringpool");
}

TEST_F(LogMessageTest, HostsCanSilenceOneSubsystemByRule) {
  QLoggingCategory::setFilterRules(QStringLiteral("velcoredata.datetime.warning=false"));
  EXPECT_FALSE(IsLogEnabled(LogArea::DateTime, LogSeverity::Warning));
  LogMessage(LogArea::DateTime, LogSeverity::Warning, "hidden");
  LogMessage(LogArea::Color, LogSeverity::Warning, "shown");
  ASSERT_EQ(g_captured.size(), 1u);
  EXPECT_EQ(g_captured[0].text, "shown");
}

TEST_F(LogMessageTest, KeepsNonAsciiText) {
  LogMessage(LogArea::Names, LogSeverity::Info, TString(u"name [\u00E9t\u00E9]"));
  ASSERT_EQ(g_captured.size(), 1u);
  EXPECT_EQ(g_captured[0].text, "name [\xC3\xA9t\xC3\xA9]");
}

TEST(TSettingsTest, ReadsWritesAndRemovesKeysInAnIniStore) {
  QTemporaryDir dir;
  ASSERT_TRUE(dir.isValid());
  const std::string path = (dir.path() + QStringLiteral("/settings.ini")).toStdString();
  {
    std::ofstream ini(path);
    // ";" starts a comment in INI files, so a semicolon value is quoted.
    ini << "[UserDefaults]\nListSeparator=\";\"\n[de_DE]\nListSeparator=|\n";
  }
  TSettings::UseIniFile(TString(path));
  EXPECT_TRUE(TSettings::Contains(TString(u"UserDefaults/ListSeparator")));
  EXPECT_EQ(TSettings::Value(TString(u"UserDefaults/ListSeparator")), TString(u";"));
  EXPECT_EQ(TSettings::Value(TString(u"de_DE/ListSeparator")), TString(u"|"));
  EXPECT_EQ(TSettings::Value(TString(u"SystemDefaults/ListSeparator"), TString(u",")), TString(u","));

  TString out(u"untouched");
  EXPECT_FALSE(TSettings::TryGetValue(TString(u"fr_FR/ListSeparator"), out));
  EXPECT_EQ(out, TString(u"untouched"));

  TSettings::SetValue(TString(u"fr_FR/ListSeparator"), TString(u"\u00A7"));
  TSettings::Sync();
  EXPECT_TRUE(TSettings::TryGetValue(TString(u"fr_FR/ListSeparator"), out));
  EXPECT_EQ(out, TString(u"\u00A7"));
  TSettings::Remove(TString(u"fr_FR/ListSeparator"));
  EXPECT_FALSE(TSettings::Contains(TString(u"fr_FR/ListSeparator")));

  TSettings::UseIniFile(TString((dir.path() + QStringLiteral("/empty.ini")).toStdString()));
  EXPECT_FALSE(TSettings::Contains(TString(u"UserDefaults/ListSeparator")));
}

}  // namespace
