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
#include "velcoredata/platform/Messages.h"
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

TEST(QualifiedNameParseTest, ReadsBracketedComponentsAndRebuildsTheCanonicalText) {
  struct Case {
    const char16_t* text;
    std::vector<std::string> components;
    const char16_t* fullValue;
  };
  const Case cases[] = {
      {u"[a].[b]", {"a", "b"}, u"[a].[b]"},
      {u"[a]]b]", {"a]b"}, u"[a]]b]"},
      {u"  [x]  ", {"x"}, u"[x]"},
      {u"\t[x]\n", {"x"}, u"[x]"},
      {u"", {}, u""},
      {u"   ", {}, u""},
      {u"[]", {""}, u"[]"},
      {u"[].[]", {"", ""}, u"[].[]"},
      {u"[[x]", {"[x"}, u"[[x]"},
      {u"[a.b]", {"a.b"}, u"[a.b]"},
      {u"[ a ]", {" a "}, u"[ a ]"},
      {u"[]]]", {"]"}, u"[]]]"},
      {u"[a]]].[b]", {"a]", "b"}, u"[a]]].[b]"},
      {u"[a]]]]b]", {"a]]b"}, u"[a]]]]b]"},
      {u"[Sales].[Orders].[Amount]", {"Sales", "Orders", "Amount"}, u"[Sales].[Orders].[Amount]"},
      {u"[caf\u00E9]", {"caf\xC3\xA9"}, u"[caf\u00E9]"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(TString(c.text).toUtf8());
    const QualifiedName name = QualifiedName::ParseGlobal(TString(c.text));
    EXPECT_EQ(Utf8(name.GetComponents()), c.components);
    EXPECT_EQ(name.GetFullValue(), TString(c.fullValue));
    EXPECT_EQ(name.GetNumberOfComponents(), c.components.size());
    EXPECT_EQ(name.IsEmpty(), c.components.empty());
    EXPECT_TRUE(QualifiedName::CanParseQualifiedName(TString(c.text)));
    EXPECT_EQ(QualifiedName::ParseLocal(TString(c.text)), name);
    const std::optional<QualifiedName> tried = QualifiedName::TryParseQualifiedName(TString(c.text), false);
    ASSERT_TRUE(tried.has_value());
    EXPECT_EQ(*tried, name);
  }
}

TEST(QualifiedNameParseTest, ReportsEachMalformationWithItsMessageId) {
  struct Case {
    const char16_t* text;
    MessageId id;
  };
  const Case cases[] = {
      {u"[a].", MessageId::IDS_ERR_QN_TRAILING_DOT},
      {u"[a].[b].", MessageId::IDS_ERR_QN_TRAILING_DOT},
      {u"[a]b", MessageId::IDS_ERR_QN_TEXT_AFTER_BRACKET},
      {u"[a] .[b]", MessageId::IDS_ERR_QN_TEXT_AFTER_BRACKET},
      {u"[a][b]", MessageId::IDS_ERR_QN_TEXT_AFTER_BRACKET},
      {u"a", MessageId::IDS_ERR_QN_MISSING_OPEN_BRACKET},
      {u"]", MessageId::IDS_ERR_QN_MISSING_OPEN_BRACKET},
      {u"[a].b", MessageId::IDS_ERR_QN_MISSING_OPEN_BRACKET},
      {u"[a]..[b]", MessageId::IDS_ERR_QN_MISSING_OPEN_BRACKET},
      {u"[a]. [b]", MessageId::IDS_ERR_QN_MISSING_OPEN_BRACKET},
      {u"[", MessageId::IDS_ERR_QN_OPEN_BRACKET_AT_END},
      {u" [ ", MessageId::IDS_ERR_QN_OPEN_BRACKET_AT_END},
      {u"[a].[", MessageId::IDS_ERR_QN_OPEN_BRACKET_AT_END},
      {u"[abc", MessageId::IDS_ERR_QN_MISSING_CLOSE_BRACKET},
      {u"[a]]", MessageId::IDS_ERR_QN_MISSING_CLOSE_BRACKET},
      {u"[]]", MessageId::IDS_ERR_QN_MISSING_CLOSE_BRACKET},
      {u"[a].[b", MessageId::IDS_ERR_QN_MISSING_CLOSE_BRACKET},
  };
  for (const Case& c : cases) {
    const TString text(c.text);
    SCOPED_TRACE(text.toUtf8());
    try {
      QualifiedName::ParseGlobal(text);
      ADD_FAILURE() << "parsed";
    } catch (const QualifiedFieldNameParseException& e) {
      EXPECT_EQ(e.GetMessageId(), c.id);
      // The error id is the message id, so a generic VelmoraException handler sees it too.
      EXPECT_EQ(e.GetErrorId(), static_cast<uint32_t>(c.id));
      EXPECT_EQ(e.GetError().GetName(), "VelmoraException_AutoGen_" + FormatErrorId(static_cast<uint32_t>(c.id)));
      EXPECT_EQ(e.GetText(), text.trimmed());
      EXPECT_EQ(e.GetMessage(), TFormatString(c.id).arg(text.trimmed()).str());
    }
    EXPECT_FALSE(QualifiedName::CanParseQualifiedName(text));
    EXPECT_FALSE(QualifiedName::TryParseQualifiedName(text, false).has_value());
    EXPECT_THROW(QualifiedName::TryParseQualifiedName(text, true), QualifiedFieldNameParseException);
    Components components{TString(u"stale")};
    EXPECT_FALSE(QualifiedName::TryGetTokens(text, components, false));
    EXPECT_TRUE(components.empty());
  }
}

TEST(QualifiedNameParseTest, MessagesNameTheOffendingTextAndSurviveCloneAndThrow) {
  const MessageId ids[] = {MessageId::IDS_ERR_QN_MISSING_OPEN_BRACKET, MessageId::IDS_ERR_QN_OPEN_BRACKET_AT_END,
                           MessageId::IDS_ERR_QN_MISSING_CLOSE_BRACKET, MessageId::IDS_ERR_QN_TRAILING_DOT,
                           MessageId::IDS_ERR_QN_TEXT_AFTER_BRACKET};
  for (const MessageId id : ids) {
    ASSERT_TRUE(CoreData::HasString(id));
    EXPECT_TRUE(CoreData::GetEnglishString(id).contains(TString(u"%1")));
    const QualifiedFieldNameParseException e(id, TString(u"[odd"));
    EXPECT_TRUE(e.GetMessage().contains(TString(u"[odd")));
    const std::unique_ptr<VelmoraException> copy = e.Clone();
    try {
      copy->Throw();
    } catch (const QualifiedFieldNameParseException& thrown) {
      EXPECT_EQ(thrown.GetMessageId(), id);
      EXPECT_EQ(thrown.GetText(), TString(u"[odd"));
    }
  }
  // Only the name-parse messages make this exception.
  EXPECT_THROW(QualifiedFieldNameParseException(MessageId::IDS_ERR_PARSING_NUMBER, TString()), VelmoraLogicException);
}

// An independent description of the grammar: bracketed components in which
// "]" only occurs doubled, joined by single dots.
const std::regex kGrammar(R"(\[(?:[^\]]|\]\])*\](?:\.\[(?:[^\]]|\]\])*\])*)");
const std::regex kComponent(R"(\[((?:[^\]]|\]\])*)\])");

TEST(QualifiedNameParseTest, AcceptsExactlyTheBracketedGrammar) {
  std::mt19937 random(424242);
  const char alphabet[] = {'[', ']', ']', '.', 'a', ' '};
  int accepted = 0;
  for (int round = 0; round < 20000; ++round) {
    std::string text(random() % 10, ' ');
    for (char& c : text) c = alphabet[random() % sizeof alphabet];
    const TString trimmed = TString(text).trimmed();
    const std::string core = trimmed.toUtf8();
    const bool valid = core.empty() || std::regex_match(core, kGrammar);
    Components components;
    ASSERT_EQ(QualifiedName::TryGetTokens(TString(text), components, false), valid) << '"' << text << '"';
    if (!valid) continue;
    ++accepted;
    std::vector<std::string> expected;
    for (auto it = std::sregex_iterator(core.begin(), core.end(), kComponent); it != std::sregex_iterator(); ++it) {
      std::string component = (*it)[1];
      for (size_t p = component.find("]]"); p != std::string::npos; p = component.find("]]", p + 1)) {
        component.erase(p, 1);
      }
      expected.push_back(component);
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
    EXPECT_EQ(parsed.GetFullValue(), built.GetFullValue());
    EXPECT_EQ(parsed.Hash(), built.Hash());
  }
}

TEST(QualifiedNameTest, ConstructorsTakeComponentsAsTheyStand) {
  const QualifiedName unquoted = QualifiedName::ParseUnquoted(TString(u"[x]"));
  EXPECT_EQ(Utf8(unquoted.GetComponents()), std::vector<std::string>{"[x]"});
  EXPECT_EQ(unquoted.GetFullValue(), TString(u"[[x]]]"));
  EXPECT_EQ(QualifiedName(TString(u"[x]")), unquoted);

  const QualifiedName two(TString(u"Orders"), TString(u"Amount"));
  EXPECT_EQ(two.GetFullValue(), TString(u"[Orders].[Amount]"));
  EXPECT_EQ(two.GetRootValue(), TString(u"Orders"));
  EXPECT_EQ(two.GetLeafValue(), TString(u"Amount"));
  EXPECT_EQ(two.GetComponent(1), TString(u"Amount"));
  EXPECT_THROW(two.GetComponent(2), VelmoraLogicException);

  const QualifiedName empty;
  EXPECT_TRUE(empty.IsEmpty());
  EXPECT_EQ(empty.GetFullValue(), TString());
  EXPECT_EQ(empty.GetRootValue(), TString());
  EXPECT_EQ(empty.GetLeafValue(), TString());
  // The empty name shares the one default payload.
  const auto& shared = QualifiedName::QNData::EmptyDefault();
  EXPECT_TRUE(shared->GetComponents().empty());
  EXPECT_EQ(&empty.GetFullValue(), &shared->GetFullValue());
  EXPECT_EQ(&QualifiedName(Components{}).GetFullValue(), &shared->GetFullValue());
}

TEST(QualifiedNameTest, CopiesMovesSwapAndClearKeepValuesApart) {
  QualifiedName a = QualifiedName::ParseGlobal(TString(u"[a].[b]"));
  QualifiedName copy = a;
  QualifiedName moved = std::move(a);
  EXPECT_TRUE(a.IsEmpty());  // NOLINT(bugprone-use-after-move): documented state
  EXPECT_EQ(moved, copy);
  QualifiedName other(TString(u"z"));
  moved.Swap(other);
  EXPECT_EQ(moved.GetFullValue(), TString(u"[z]"));
  EXPECT_EQ(other, copy);
  other.Clear();
  EXPECT_TRUE(other.IsEmpty());
  EXPECT_EQ(copy.GetFullValue(), TString(u"[a].[b]"));
  QualifiedName target(TString(u"t"));
  target = std::move(copy);
  EXPECT_EQ(target.GetFullValue(), TString(u"[a].[b]"));
  EXPECT_TRUE(copy.IsEmpty());  // NOLINT(bugprone-use-after-move)
}

TEST(QualifiedNameTest, RootAndLeafEditsRebuildTheTextAndLeaveCopiesAlone) {
  QualifiedName name = QualifiedName::ParseGlobal(TString(u"[b]"));
  const QualifiedName before = name;
  name.PushValue(TString(u"c]")).PushRoot(TString(u"a"));
  EXPECT_EQ(name.GetFullValue(), TString(u"[a].[b].[c]]]"));
  EXPECT_EQ(before.GetFullValue(), TString(u"[b]"));
  EXPECT_EQ(name.Hash(), QualifiedName::ParseGlobal(TString(u"[a].[b].[c]]]")).Hash());

  name.ReplaceRoot(TString(u"A")).ReplaceValue(TString(u"C"));
  EXPECT_EQ(name.GetFullValue(), TString(u"[A].[b].[C]"));
  name.SetRootValue(TString(u"R"));
  EXPECT_EQ(name.GetFullValue(), TString(u"[R].[b].[C]"));
  name.PopRoot();
  EXPECT_EQ(name.GetFullValue(), TString(u"[b].[C]"));
  name.PopValue();
  EXPECT_EQ(name.GetFullValue(), TString(u"[b]"));
  // Popping the only component leaves the empty name; popping again is a bug.
  name.PopValue();
  EXPECT_TRUE(name.IsEmpty());
  EXPECT_EQ(name.GetFullValue(), TString());
  EXPECT_THROW(name.PopValue(), VelmoraLogicException);
  EXPECT_THROW(name.PopRoot(), VelmoraLogicException);
  QualifiedName single(TString(u"x"));
  single.PopRoot();
  EXPECT_TRUE(single.IsEmpty());
  // Replacing the root or leaf of the empty name gives a one-component name.
  EXPECT_EQ(QualifiedName().ReplaceRoot(TString(u"r")).GetFullValue(), TString(u"[r]"));
  EXPECT_EQ(QualifiedName().ReplaceValue(TString(u"v")).GetFullValue(), TString(u"[v]"));
  EXPECT_EQ(QualifiedName().SetRootValue(TString(u"s")).GetFullValue(), TString(u"[s]"));
}

TEST(QualifiedNameTest, ComparesFullValuesWithAndWithoutCase) {
  const QualifiedName upper = QualifiedName::ParseGlobal(TString(u"[Sales].[Amount]"));
  const QualifiedName lower = QualifiedName::ParseGlobal(TString(u"[sales].[amount]"));
  EXPECT_NE(upper, lower);
  EXPECT_NE(upper.Compare(lower), 0);
  EXPECT_EQ(upper.CompareNoCase(lower), 0);
  EXPECT_EQ(QualifiedName::ParseGlobal(TString(u"[\u00C9t\u00E9]"))
                .CompareNoCase(QualifiedName::ParseGlobal(TString(u"[\u00E9T\u00C9]"))),
            0);
  // Code-unit order of the canonical texts: "S" (0x53) < "s" (0x73).
  EXPECT_TRUE(upper < lower);
  EXPECT_FALSE(lower < upper);
  EXPECT_LT(upper.Compare(lower), 0);
  EXPECT_GT(lower.Compare(upper), 0);
  EXPECT_EQ(upper, QualifiedName(TString(u"Sales"), TString(u"Amount")));
  EXPECT_LT(QualifiedName().Compare(upper), 0);
  EXPECT_LT(QualifiedName(TString(u"a")).CompareNoCase(QualifiedName(TString(u"B"))), 0);
}

TEST(QualifiedNameTest, HashChainsThash32OverComponentsFromDeadBeef) {
  EXPECT_EQ(QualifiedName().Hash(), 0xDEADBEEFu);
  EXPECT_EQ(QualifiedName::CalcHash({}), 0xDEADBEEFu);
  const std::u16string a = u"Sales", b = u"Amount";
  const uint32_t first = THash32(a.data(), a.size() * 2, 0xDEADBEEF);
  const uint32_t chained = THash32(b.data(), b.size() * 2, first);
  const QualifiedName name(TString(u"Sales"), TString(u"Amount"));
  EXPECT_EQ(name.Hash(), chained);
  EXPECT_EQ(name.Hash(), chained);  // cached
  EXPECT_EQ(QualifiedName::CalcHash(name.GetComponents()), chained);
  EXPECT_EQ(std::hash<QualifiedName>()(name), chained);
  // Order matters, and the dot is not hashed: [a.b] differs from [a].[b].
  EXPECT_NE(QualifiedName(TString(u"Amount"), TString(u"Sales")).Hash(), chained);
  EXPECT_NE(QualifiedName(TString(u"a.b")).Hash(), QualifiedName(TString(u"a"), TString(u"b")).Hash());
}

TEST(QualifiedNameTest, LeafOrderIgnoresCaseAndEverythingButTheLeaf) {
  std::vector<QualifiedName> names = {
      QualifiedName(TString(u"T1"), TString(u"beta")), QualifiedName(TString(u"T0"), TString(u"Gamma")),
      QualifiedName(TString(u"T2"), TString(u"ALPHA")), QualifiedName(),
  };
  std::sort(names.begin(), names.end(), QualifiedNameCompareLeafValueNoCase());
  EXPECT_TRUE(names[0].IsEmpty());  // the empty leaf sorts first
  EXPECT_EQ(names[1].GetLeafValue(), TString(u"ALPHA"));
  EXPECT_EQ(names[2].GetLeafValue(), TString(u"beta"));
  EXPECT_EQ(names[3].GetLeafValue(), TString(u"Gamma"));
  const QualifiedNameCompareLeafValueNoCase less;
  EXPECT_FALSE(less(QualifiedName(TString(u"X")), QualifiedName(TString(u"a"), TString(u"x"))));
  EXPECT_FALSE(less(QualifiedName(TString(u"a"), TString(u"x")), QualifiedName(TString(u"X"))));
}

TEST(QualifiedNameConcurrencyTest, CopiesOfOneNameHashAndCompareOnManyThreads) {
  const QualifiedName shared = QualifiedName::ParseGlobal(TString(u"[Sales].[Orders].[Amount]"));
  const uint32_t expected = QualifiedName::CalcHash(shared.GetComponents());
  std::vector<std::thread> threads;
  std::vector<int> failures(4, 0);
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < 2000; ++i) {
        QualifiedName copy = shared;
        if (copy.Hash() != expected) ++failures[static_cast<size_t>(t)];
        copy.PushValue(TString(u"x"));
        if (copy == shared || copy.PopValue() != shared) ++failures[static_cast<size_t>(t)];
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures, std::vector<int>(4, 0));
  EXPECT_EQ(shared.GetFullValue(), TString(u"[Sales].[Orders].[Amount]"));
}

}  // namespace
