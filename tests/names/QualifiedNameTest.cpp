// QualifiedName: parsing, canonical text, edits, comparison and hashing.

#include <algorithm>
#include <random>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "velcoredata/names/QualifiedName.h"
#include "velcoredata/platform/LogicException.h"
#include "velcoredata/platform/TFormatString.h"
#include "velcoredata/platform/THash.h"

namespace {

using Components = QualifiedName::Components;
using MessageId = CoreData::StringId;

std::vector<std::string> Utf8(const Components& components) {
  std::vector<std::string> out;
  for (const TString& c : components) out.push_back(c.toUtf8());
  return out;
}

QualifiedName Parse(const char16_t* text) { return QualifiedName::ParseGlobal(TString(text)); }

TEST(QualifiedNameParseTest, ReadsBracketedComponentsAndRebuildsTheCanonicalText) {
  struct Case {
    const char16_t* text;
    std::vector<std::string> components;
    const char16_t* fullValue;
  };
  const Case cases[] = {
      {u"[a].[b]", {"a", "b"}, u"[a].[b]"},       {u"[a]]b]", {"a]b"}, u"[a]]b]"},
      {u" \t[x]\n ", {"x"}, u"[x]"},             {u"   ", {}, u""},
      {u"[].[]", {"", ""}, u"[].[]"},             {u"[[x.y]", {"[x.y"}, u"[[x.y]"},
      {u"[]]]", {"]"}, u"[]]]"},                  {u"[a]]].[ b ]", {"a]", " b "}, u"[a]]].[ b ]"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(TString(c.text).toUtf8());
    const QualifiedName name = Parse(c.text);
    EXPECT_EQ(Utf8(name.GetComponents()), c.components);
    EXPECT_EQ(name.GetFullValue(), TString(c.fullValue));
    EXPECT_EQ(QualifiedName::ParseLocal(TString(c.text)), name);
    EXPECT_EQ(QualifiedName::TryParseQualifiedName(TString(c.text), false), name);
  }
  // Unquoted text is one component as it stands, brackets included.
  const QualifiedName unquoted = QualifiedName::ParseUnquoted(TString(u"[x]"));
  EXPECT_EQ(Utf8(unquoted.GetComponents()), std::vector<std::string>{"[x]"});
  EXPECT_EQ(unquoted.GetFullValue(), TString(u"[[x]]]"));
}

TEST(QualifiedNameParseTest, ReportsEachMalformationWithItsMessageId) {
  const std::pair<const char16_t*, MessageId> cases[] = {
      {u"[a].", MessageId::IDS_ERR_QN_TRAILING_DOT},         {u"[a]b", MessageId::IDS_ERR_QN_TEXT_AFTER_BRACKET},
      {u"[a] .[b]", MessageId::IDS_ERR_QN_TEXT_AFTER_BRACKET}, {u"a", MessageId::IDS_ERR_QN_MISSING_OPEN_BRACKET},
      {u"[a]..[b]", MessageId::IDS_ERR_QN_MISSING_OPEN_BRACKET}, {u" [ ", MessageId::IDS_ERR_QN_OPEN_BRACKET_AT_END},
      {u"[a].[", MessageId::IDS_ERR_QN_OPEN_BRACKET_AT_END},  {u"[abc", MessageId::IDS_ERR_QN_MISSING_CLOSE_BRACKET},
      {u"[]]", MessageId::IDS_ERR_QN_MISSING_CLOSE_BRACKET},
  };
  for (const auto& [raw, id] : cases) {
    const TString text(raw);
    SCOPED_TRACE(text.toUtf8());
    try {
      QualifiedName::ParseGlobal(text);
      ADD_FAILURE() << "parsed";
    } catch (const QualifiedFieldNameParseException& e) {
      // The error id is the message id, so a generic handler sees which rule broke.
      EXPECT_EQ(e.GetErrorId(), static_cast<uint32_t>(id));
      EXPECT_EQ(e.GetMessageId(), id);
      EXPECT_EQ(e.GetText(), text.trimmed());
      EXPECT_EQ(e.GetMessage(), TFormatString(id).arg(text.trimmed()).str());
      EXPECT_THROW(e.Clone()->Throw(), QualifiedFieldNameParseException);
    }
    EXPECT_FALSE(QualifiedName::CanParseQualifiedName(text));
    Components components{TString(u"stale")};
    EXPECT_FALSE(QualifiedName::TryGetTokens(text, components, false));
    EXPECT_TRUE(components.empty());
  }
  EXPECT_THROW(QualifiedFieldNameParseException(MessageId::IDS_ERR_PARSING_NUMBER, TString()), VelmoraLogicException);
}

TEST(QualifiedNameParseTest, AcceptsExactlyTheBracketedGrammar) {
  // An independent statement of the grammar: bracketed components in which
  // "]" only occurs doubled, joined by single dots.
  const std::regex grammar(R"(\[(?:[^\]]|\]\])*\](?:\.\[(?:[^\]]|\]\])*\])*)");
  const std::regex component(R"(\[((?:[^\]]|\]\])*)\])");
  std::mt19937 random(424242);
  const char alphabet[] = {'[', ']', ']', '.', 'a', ' '};
  int accepted = 0;
  for (int round = 0; round < 20000; ++round) {
    std::string text(random() % 10, ' ');
    for (char& c : text) c = alphabet[random() % sizeof alphabet];
    const std::string core = TString(text).trimmed().toUtf8();
    const bool valid = core.empty() || std::regex_match(core, grammar);
    Components components;
    ASSERT_EQ(QualifiedName::TryGetTokens(TString(text), components, false), valid) << '"' << text << '"';
    if (!valid) continue;
    ++accepted;
    std::vector<std::string> expected;
    for (auto it = std::sregex_iterator(core.begin(), core.end(), component); it != std::sregex_iterator(); ++it) {
      expected.push_back(std::regex_replace((*it)[1].str(), std::regex(R"(\]\])"), "]"));
    }
    EXPECT_EQ(Utf8(components), expected) << '"' << text << '"';
  }
  EXPECT_GT(accepted, 500);  // the alphabet reaches valid names often enough
}

TEST(QualifiedNameParseTest, CanonicalTextParsesBackToTheSameComponents) {
  std::mt19937 random(99);
  const char16_t alphabet[] = {u'[', u']', u'.', u'a', u' ', u'\u00E9', u'\t'};
  for (int round = 0; round < 3000; ++round) {
    Components components(random() % 4);
    for (TString& c : components) {
      std::u16string text(random() % 5, u' ');
      for (char16_t& ch : text) ch = alphabet[random() % std::size(alphabet)];
      c = TString(text);
    }
    const QualifiedName built{Components(components)};
    const QualifiedName parsed = QualifiedName::ParseGlobal(built.GetFullValue());
    ASSERT_EQ(Utf8(parsed.GetComponents()), Utf8(components)) << built.GetFullValue().toUtf8();
    EXPECT_EQ(parsed.Hash(), built.Hash());
  }
}

TEST(QualifiedNameTest, RootAndLeafEditsRebuildTheTextAndLeaveCopiesAlone) {
  QualifiedName name(TString(u"b"));
  const QualifiedName before = name;
  name.PushValue(TString(u"c]")).PushRoot(TString(u"a"));
  EXPECT_EQ(name.GetFullValue(), TString(u"[a].[b].[c]]]"));
  EXPECT_EQ(before.GetFullValue(), TString(u"[b]"));
  EXPECT_EQ(name.Hash(), Parse(u"[a].[b].[c]]]").Hash());
  name.ReplaceRoot(TString(u"A")).ReplaceValue(TString(u"C"));
  EXPECT_EQ(name, QualifiedName(Components{u"A", u"b", u"C"}));
  name.PopRoot().PopValue();
  EXPECT_EQ(name.GetFullValue(), TString(u"[b]"));
  EXPECT_THROW(name.GetComponent(1), VelmoraLogicException);
  // Popping the only component leaves the empty name; popping again is a bug.
  name.PopValue();
  EXPECT_TRUE(name.IsEmpty());
  EXPECT_EQ(&name.GetFullValue(), &QualifiedName::QNData::EmptyDefault()->GetFullValue());
  EXPECT_THROW(name.PopRoot(), VelmoraLogicException);
  EXPECT_EQ(name.GetLeafValue(), TString());
  EXPECT_EQ(QualifiedName().SetRootValue(TString(u"s")), QualifiedName(TString(u"s")));
  QualifiedName moved = std::move(name.PushValue(TString(u"m")));
  EXPECT_TRUE(name.IsEmpty());  // NOLINT(bugprone-use-after-move): documented state
  EXPECT_EQ(moved.GetFullValue(), TString(u"[m]"));
}

TEST(QualifiedNameTest, ComparesFullValuesAndHashesComponentsInAChain) {
  const QualifiedName upper = QualifiedName(TString(u"Sales"), TString(u"Amount"));
  const QualifiedName lower = Parse(u"[sales].[amount]");
  EXPECT_NE(upper, lower);
  EXPECT_EQ(upper.CompareNoCase(lower), 0);
  EXPECT_TRUE(upper < lower);  // code-unit order: "S" < "s"
  EXPECT_GT(lower.Compare(upper), 0);
  EXPECT_EQ(Parse(u"[\u00C9t\u00E9]").CompareNoCase(Parse(u"[\u00E9T\u00C9]")), 0);

  EXPECT_EQ(QualifiedName().Hash(), 0xDEADBEEFu);
  const std::u16string a = u"Sales", b = u"Amount";
  const uint32_t chained = THash32(b.data(), b.size() * 2, THash32(a.data(), a.size() * 2, 0xDEADBEEF));
  EXPECT_EQ(upper.Hash(), chained);
  EXPECT_EQ(std::hash<QualifiedName>()(upper), chained);
  EXPECT_NE(QualifiedName(TString(u"Sales.Amount")).Hash(), chained);  // the dot is not hashed

  std::vector<QualifiedName> names = {QualifiedName(TString(u"T1"), TString(u"beta")),
                                      QualifiedName(TString(u"T0"), TString(u"Gamma")),
                                      QualifiedName(TString(u"ALPHA")), QualifiedName()};
  std::sort(names.begin(), names.end(), QualifiedNameCompareLeafValueNoCase());
  EXPECT_EQ(names[0].GetLeafValue(), TString());
  EXPECT_EQ(names[1].GetLeafValue(), TString(u"ALPHA"));
  EXPECT_EQ(names[3].GetLeafValue(), TString(u"Gamma"));
}

TEST(QualifiedNameConcurrencyTest, CopiesOfOneNameHashAndEditOnManyThreads) {
  const QualifiedName shared = Parse(u"[Sales].[Orders].[Amount]");
  const uint32_t expected = QualifiedName::CalcHash(shared.GetComponents());
  std::vector<int> failures(4, 0);
  std::vector<std::thread> threads;
  for (size_t t = 0; t < failures.size(); ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < 2000; ++i) {
        QualifiedName copy = shared;  // the first Hash() calls race to fill the cache
        if (copy.Hash() != expected || copy.PushValue(TString(u"x")).PopValue() != shared) ++failures[t];
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures, std::vector<int>(4, 0));
}

}  // namespace
