// Format strings, errors, hashes, character classes and message tables.

#include <QTranslator>

#include <memory>
#include <regex>
#include <set>

#include <gtest/gtest.h>

#define XXH_INLINE_ALL
#include <xxhash.h>

#include "velcoredata/core/EnumEncoding.h"
#include "velcoredata/core/VelErrorsError.h"
#include "velcoredata/platform/LogicException.h"
#include "velcoredata/platform/Messages.h"
#include "velcoredata/platform/TCType.h"
#include "velcoredata/platform/TFormatString.h"
#include "velcoredata/platform/THash.h"

namespace {

TEST(TFormatStringTest, FillsNumberedMarkersByArgumentPosition) {
  EXPECT_EQ(TFormatString(u"%2-%1-%2").arg(TString(u"a")).arg(7).str(), TString(u"7-a-7"));
  EXPECT_EQ(TFormatString(u"%1 of %2").arg(2.5).arg(-3LL).str(), TString(u"2.5 of -3"));
  EXPECT_EQ(TFormatString(u"x=%1").arg(255u, 16).str(), TString(u"x=ff"));
}

TEST(TFormatStringTest, SingleCharacterArgumentsWriteTheCharacterNotItsCode) {
  EXPECT_EQ(TFormatString(u"[%1%2%3]").arg(u'x').arg('y').arg(u'\u00e9').str(), TString(u"[xy\u00e9]"));
  EXPECT_EQ(TFormatString(u"%1").arg(u'%').str(), TString(u"%"));
}

TEST(TFormatStringTest, LeavesMarkersWithoutArgumentsAndOrdinaryPercentSigns) {
  EXPECT_EQ(TFormatString(u"%1 and %3").arg(TString(u"a")).str(), TString(u"a and %3"));
  EXPECT_EQ(TFormatString(u"100% %0 %").arg(TString(u"a")).str(), TString(u"100% %0 %"));
  // Two digits are read as one marker: %12 needs twelve arguments.
  EXPECT_EQ(TFormatString(u"%12").arg(TString(u"a")).str(), TString(u"%12"));
  TFormatString many(u"%10");
  for (int i = 1; i <= 10; ++i) many.arg(i);
  EXPECT_EQ(many.str(), TString(u"10"));
  EXPECT_EQ(TFormatString(u"").arg(1).str(), TString());
}

TEST(TFormatStringTest, TakesLocalisedMessagesAsPatterns) {
  const TString text = TFormatString(CoreData::StringId::IDS_ERR_INCORRECT_DATA_TYPE_GET).arg(0).arg(1);
  EXPECT_EQ(text, TString(u"Incorrect data type 1, getting expected 0 type."));
}

TEST(ErrorFactoryTest, MakesErrorsWithTheirIdAndSymbolicName) {
  const VelmoraError e = VelErrorsError::AutoGen_0x79B9C33C(TString(u"bad"));
  EXPECT_EQ(e.GetId(), 0x79B9C33Cu);
  EXPECT_EQ(e.GetName(), "VelmoraException_AutoGen_0x79B9C33C");
  EXPECT_EQ(e.GetMessage(), TString(u"bad"));
  const VelmoraError d0 = VelErrorsError::IncorrectDatatypeException_0xCA8336D0(0, 1);
  EXPECT_EQ(d0.GetId(), 0xCA8336D0u);
  EXPECT_EQ(d0.GetMessage(), TString(u"Incorrect data type 1, getting expected 0 type."));
  const VelmoraError d1 = VelErrorsError::IncorrectDatatypeException_0xCA8336D1(2, 5);
  EXPECT_EQ(d1.GetMessage(), TString(u"Incorrect data type 5, setting expected 2 type."));
}

TEST(ErrorFactoryTest, ListsEveryIdOnceInItsWrittenForm) {
  const auto& ids = VelErrorsError::AllErrorIds();
  const auto& texts = VelErrorsError::AllErrorIdTexts();
  ASSERT_EQ(ids.size(), texts.size());
  std::set<uint32_t> unique(ids.begin(), ids.end());
  EXPECT_EQ(unique.size(), ids.size());
  const std::regex form("0x[0-9A-F]{8}");
  for (size_t i = 0; i < ids.size(); ++i) {
    EXPECT_TRUE(std::regex_match(texts[i], form)) << texts[i];
    EXPECT_EQ(FormatErrorId(ids[i]), texts[i]);
  }
}

TEST(VelmoraExceptionTest, CloneAndThrowKeepTheDynamicType) {
  const VelmoraException plain(VelErrorsError::AutoGen_0xDD90F63D(TString(u"msg")));
  EXPECT_STREQ(plain.what(), "VelmoraException_AutoGen_0xDD90F63D: msg");
  const std::unique_ptr<VelmoraException> copy = plain.Clone();
  EXPECT_EQ(copy->GetErrorId(), 0xDD90F63Du);
  EXPECT_THROW(copy->Throw(), VelmoraException);

  const XMLEnumEncodingException derived("Units", 9);
  std::unique_ptr<VelmoraException> base = derived.Clone();
  EXPECT_THROW(base->Throw(), XMLEnumEncodingException);
  EXPECT_THROW(VelErrorsError::AutoGen_0x79B9C33C().Throw(), VelmoraException);
  EXPECT_STREQ(VelmoraException(VelErrorsError::AutoGen_0x79B9C33C()).what(),
               "VelmoraException_AutoGen_0x79B9C33C");
}

TEST(LogicExceptionTest, CarriesSourceLineAndConditionText) {
  try {
    const int width = 0;
    VEL_ASSERT_IN("data/Pool", width > 0);
    FAIL() << "no exception";
  } catch (const VelmoraLogicException& e) {
    EXPECT_EQ(e.GetSourceName(), "data/Pool");
    EXPECT_EQ(e.GetCondition(), "width > 0");
    EXPECT_GT(e.GetLine(), 0);
  }
  try {
    VEL_ASSERT(1 + 1 == 3);
    FAIL() << "no exception";
  } catch (const VelmoraLogicException& e) {
    EXPECT_EQ(e.GetSourceName(), "PlatformBasicsTest.cpp");
    EXPECT_EQ(e.GetCondition(), "1 + 1 == 3");
  }
  EXPECT_NO_THROW(VEL_ASSERT(true));
  EXPECT_THROW(VEL_FAIL("false"), std::logic_error);
}

TEST(EnumEncodingTest, EncodesKnownValuesDecodesWithDefaultAndRejectsUnknown) {
  enum class Units : int { None = 0, K = 1, M = 2 };
  const EnumEncodingTable<Units> table("Units", {{Units::K, u"K"}, {Units::None, u""}, {Units::M, u"M"}},
                                       Units::None);
  EXPECT_EQ(table.Encode(Units::M), TString(u"M"));
  EXPECT_EQ(table.Decode(TString(u"K")), Units::K);
  EXPECT_EQ(table.Decode(TString(u"Q")), Units::None);
  EXPECT_EQ(table.Entries().begin()->first, Units::None);  // ordered by value
  try {
    table.Encode(static_cast<Units>(7));
    FAIL() << "no exception";
  } catch (const XMLEnumEncodingException& e) {
    EXPECT_EQ(e.GetErrorId(), 0x3E0C1A75u);
    EXPECT_TRUE(e.GetMessage().contains(TString(u"Units")));
  }
}

TEST(THashTest, AreXxHashWithTheDocumentedSeeds) {
  const char16_t text[] = u"hello";
  const size_t bytes = 5 * sizeof(char16_t);
  EXPECT_EQ(THash32(text, bytes, 0xDEADBEEF), XXH32(text, bytes, 0xDEADBEEF));
  EXPECT_EQ(THash64(text, bytes, 0xDEADBEEF), XXH64(text, bytes, 0xDEADBEEF));
  const XXH128_hash_t ref = XXH3_128bits_withSeed(text, bytes, 0xDEADBEEFCAFEBABEull);
  const THash128Value h = THash128(text, bytes, 0xDEADBEEF, 0xCAFEBABE);
  EXPECT_EQ(h.low, ref.low64);
  EXPECT_EQ(h.high, ref.high64);
  // Known XXH32/XXH64 values of the empty input with seed 0.
  EXPECT_EQ(THash32(nullptr, 0, 0), 0x02CC5D05u);
  EXPECT_EQ(THash64(nullptr, 0, 0), 0xEF46DB3751D8E999ull);
  EXPECT_NE(THash32(text, bytes, 1), THash32(text, bytes, 2));
}

TEST(THashTest, CombineDependsOnOrderAndOnEveryInput) {
  EXPECT_NE(THashCombine32(1, 2), THashCombine32(2, 1));
  std::set<uint32_t> seen;
  for (uint32_t flags = 0; flags < 64; ++flags) seen.insert(THashCombine32(0xABCDEF01u, flags));
  EXPECT_EQ(seen.size(), 64u);
  static_assert(THashCombine32(0, 0) == THashCombine32(0, 0));
}

TEST(TCTypeTest, ClassifiesUtf16CodeUnits) {
  EXPECT_TRUE(TCType::isAlpha(u'a'));
  EXPECT_TRUE(TCType::isAlpha(u'\u00E9'));
  EXPECT_TRUE(TCType::isAlpha(u'\u65E5'));  // CJK ideograph
  EXPECT_FALSE(TCType::isAlpha(u'1'));
  EXPECT_FALSE(TCType::isAlpha(u'\''));
  EXPECT_FALSE(TCType::isAlpha(0xD800));
  EXPECT_TRUE(TCType::isDigit(u'\u0663'));
  EXPECT_TRUE(TCType::isSpace(u'\u00A0'));
  EXPECT_FALSE(TCType::isSpace(u'x'));
  EXPECT_EQ(TCType::toUpper(u'\u00E9'), u'\u00C9');
  EXPECT_EQ(TCType::toLower(u'Z'), u'z');
  EXPECT_EQ(TCType::toUpper(u'\u00DF'), u'\u00DF');  // no one-unit upper case
  EXPECT_TRUE(TCType::isHexDigit(u'f'));
  EXPECT_FALSE(TCType::isHexDigit(u'g'));
}

class UpperCaseTranslator : public QTranslator {
 public:
  QString translate(const char* context, const char* source, const char* disambiguation,
                    int) const override {
    if (QLatin1String(context) != QLatin1String("CoreData")) return {};
    if (QLatin1String(disambiguation) != QLatin1String("IDS_VALUE_LIST_NO_VALUES")) return {};
    return QString::fromUtf8(source).toUpper();
  }
};

TEST(MessagesTest, LooksUpByIdAndKeyWithPlaceholdersForUnknowns) {
  EXPECT_EQ(CoreData::GetString(CoreData::StringId::IDS_VALUE_LIST_NO_VALUES), TString(u"None"));
  EXPECT_EQ(CoreData::GetString("IDS_VALUE_LIST_SEPARATOR"), TString(u", "));
  EXPECT_EQ(CoreData::GetString(static_cast<CoreData::StringId>(0x12345678)),
            TString(u"[missing message 0x12345678]"));
  EXPECT_EQ(CoreData::GetString("IDS_NO_SUCH_KEY"), TString(u"[missing message IDS_NO_SUCH_KEY]"));
  CoreData::StringId id{};
  ASSERT_TRUE(CoreData::FindStringId("IDS_ERR_PARSING_DATETIME", id));
  EXPECT_EQ(static_cast<uint32_t>(id), 0x92B2281Fu);
  EXPECT_STREQ(CoreData::GetKeyName(id), "IDS_ERR_PARSING_DATETIME");
  EXPECT_FALSE(CoreData::HasString(static_cast<CoreData::StringId>(1)));
}

TEST(MessagesTest, InstalledTranslatorsWinUntilRemoved) {
  auto translator = std::make_shared<UpperCaseTranslator>();
  CoreData::InstallTranslator(translator);
  EXPECT_EQ(CoreData::GetString(CoreData::StringId::IDS_VALUE_LIST_NO_VALUES), TString(u"NONE"));
  // Messages the translator does not know stay English.
  EXPECT_EQ(CoreData::GetString(CoreData::StringId::IDS_VALUE_LIST_SEPARATOR), TString(u", "));
  EXPECT_EQ(CoreData::GetEnglishString(CoreData::StringId::IDS_VALUE_LIST_NO_VALUES), TString(u"None"));
  CoreData::RemoveTranslator(translator.get());
  EXPECT_EQ(CoreData::GetString(CoreData::StringId::IDS_VALUE_LIST_NO_VALUES), TString(u"None"));
}

}  // namespace
