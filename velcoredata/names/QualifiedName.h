// QualifiedName: a multi-part name such as a field inside a table inside a
// data source.
//
// The text form writes every component in square brackets and joins the
// components with dots, root first and leaf last: [Sales].[Orders].[Amount].
// Inside the brackets a "]" is written doubled ("]]"); "[" and "." need no
// escaping. The canonical text (the full value) is always rebuilt from the
// components, so two names with the same components have the same text.
//
// A QualifiedName is an immutable, cheaply copied value: it shares a
// reference-counted QNData with its copies, and every edit gives the object a
// new QNData, so copies taken earlier keep their value. The hash is computed
// on first use and cached in the shared data.
//
// Thread-safety: one object is not synchronised; distinct objects that share
// their data may be used on distinct threads (the shared data is immutable
// apart from the atomic hash cache).
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include <boost/container/small_vector.hpp>

#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/Messages.h"
#include "velcoredata/platform/TString.h"
#include "velcoredata/platform/VelmoraException.h"

// A malformed bracketed name. GetMessageId() says what is wrong (one of the
// IDS_ERR_QN_* messages) and GetText() is the name text that was parsed,
// trimmed of surrounding white space. The exception's error id is the
// message id itself (0x1B855B5D, 0xE9B307EB, 0x7C61D0A1, 0x11C349CE or
// 0x74F09893), so a caller that catches VelmoraException still learns which
// rule the text broke; its message is the localised text of that message
// with the offending text filled in.
class VELCOREDATA_EXPORT QualifiedFieldNameParseException : public VelmoraException {
 public:
  // `messageId` must be one of the five IDS_ERR_QN_* ids (logic exception
  // otherwise: the library raises no other name-parse ids).
  QualifiedFieldNameParseException(CoreData::StringId messageId, TString text);

  CoreData::StringId GetMessageId() const noexcept { return m_messageId; }
  const TString& GetText() const noexcept { return m_text; }

  std::unique_ptr<VelmoraException> Clone() const override;
  [[noreturn]] void Throw() const override;

 private:
  CoreData::StringId m_messageId;
  TString m_text;
};

class VELCOREDATA_EXPORT QualifiedName {
 public:
  using Components = boost::container::small_vector<TString, 2>;

  // The shared, immutable payload of a name.
  class VELCOREDATA_EXPORT QNData {
   public:
    // Builds the data of a name with these components, root first; the full
    // value is rebuilt from them.
    explicit QNData(Components components);
    QNData(const QNData&) = delete;
    QNData& operator=(const QNData&) = delete;

    // The one shared empty instance (no components, empty full value),
    // created on first use and never destroyed.
    static const std::shared_ptr<const QNData>& EmptyDefault();

    const TString& GetFullValue() const noexcept { return m_fullValue; }
    const Components& GetComponents() const noexcept { return m_components; }
    // The cached hash, computed on first call. Safe to call from several
    // threads at once: they all compute and store the same value.
    uint32_t Hash() const noexcept;

   private:
    mutable std::atomic<uint32_t> m_hash{0};  // 0 = not yet computed
    TString m_fullValue;
    Components m_components;
  };

  // The empty name (no components).
  QualifiedName() noexcept;
  // A name of one component, taken as it stands: no brackets are expected
  // and nothing is parsed, so QualifiedName(u"[x]") has the component "[x]".
  // Explicit because a text is usually meant to be parsed (ParseGlobal).
  explicit QualifiedName(const TString& component);
  // A name of two components: `root` then `leaf`.
  QualifiedName(const TString& root, const TString& leaf);
  explicit QualifiedName(Components&& components);
  QualifiedName(const QualifiedName& other) noexcept = default;
  // The moved-from name is left empty.
  QualifiedName(QualifiedName&& other) noexcept;
  QualifiedName& operator=(const QualifiedName& other) noexcept = default;
  QualifiedName& operator=(QualifiedName&& other) noexcept;
  virtual ~QualifiedName();

  void Swap(QualifiedName& other) noexcept { m_data.swap(other.m_data); }
  void Clear() noexcept;
  bool IsEmpty() const noexcept { return m_data->GetComponents().empty(); }

  // Parsing. The text is trimmed of surrounding white space; an empty (or
  // all-blank) text is the empty name. Every component must be bracketed.
  // Throws QualifiedFieldNameParseException on a malformed text.
  static QualifiedName ParseGlobal(const TString& text);
  // The same operation as ParseGlobal: local and global names share a syntax.
  static QualifiedName ParseLocal(const TString& text);
  // A name of exactly one component whose text is `text` as it stands.
  static QualifiedName ParseUnquoted(const TString& text);
  // Whether ParseGlobal would succeed. Never throws.
  static bool CanParseQualifiedName(const TString& text) noexcept;
  // The parsed name, or nullopt on a malformed text when throwOnError is
  // false (with throwOnError true a malformed text throws as ParseGlobal).
  static std::optional<QualifiedName> TryParseQualifiedName(const TString& text, bool throwOnError);
  // The tokenizer: cuts a bracketed name into its unquoted components.
  // Returns true on success with `components` holding them; on a malformed
  // text returns false with `components` empty, or throws
  // QualifiedFieldNameParseException when throwOnError is true.
  static bool TryGetTokens(TString text, Components& components, bool throwOnError);

  // The canonical bracketed text of `components`: each is written as "[" +
  // the component with every "]" doubled + "]", joined with ".".
  static TString RebuildFullValue(const Components& components);
  // The chained hash of `components`: THash32 over each component's UTF-16
  // bytes in order, seeded with 0xDEADBEEF for the first and with each result
  // for the next. No components hash to 0xDEADBEEF.
  static uint32_t CalcHash(const Components& components) noexcept;

  // Accessors.
  const TString& GetFullValue() const noexcept { return m_data->GetFullValue(); }
  const Components& GetComponents() const noexcept { return m_data->GetComponents(); }
  size_t GetNumberOfComponents() const noexcept { return m_data->GetComponents().size(); }
  // Component `index` (0 = root). An index at or past the number of
  // components raises the logic exception.
  const TString& GetComponent(size_t index) const;
  // The first / last component; the empty text for the empty name, so that
  // callers can sort and compare names without checking for emptiness.
  const TString& GetRootValue() const noexcept;
  const TString& GetLeafValue() const noexcept;

  // Root and leaf edits. Each gives this object a new payload with the full
  // value rebuilt; copies taken earlier are unaffected. They return *this.
  //
  // Replacing the root or the leaf of the empty name makes it a name of that
  // one component (the empty name has no root to keep). Popping the only
  // component leaves the empty name, like popping the last item of a stack;
  // popping from the empty name is a programming error (logic exception).
  QualifiedName& SetRootValue(const TString& root) { return ReplaceRoot(root); }
  QualifiedName& PushValue(const TString& leaf);
  QualifiedName& PopValue();
  QualifiedName& PushRoot(const TString& root);
  QualifiedName& PopRoot();
  QualifiedName& ReplaceRoot(const TString& root);
  QualifiedName& ReplaceValue(const TString& leaf);

  // Comparison of the full values: negative, 0 or positive. Compare orders
  // by UTF-16 code unit; CompareNoCase ignores letter case.
  int Compare(const QualifiedName& other) const noexcept;
  int CompareNoCase(const QualifiedName& other) const noexcept;
  friend bool operator==(const QualifiedName& a, const QualifiedName& b) noexcept {
    return a.Compare(b) == 0;
  }
  friend bool operator!=(const QualifiedName& a, const QualifiedName& b) noexcept {
    return a.Compare(b) != 0;
  }
  friend bool operator<(const QualifiedName& a, const QualifiedName& b) noexcept {
    return a.Compare(b) < 0;
  }

  // CalcHash of the components, cached in the shared payload.
  uint32_t Hash() const noexcept { return m_data->Hash(); }

 private:
  void Assign(Components&& components);

  std::shared_ptr<const QNData> m_data;
};

// Orders names by their leaf values after lower-casing both (TString::toLower),
// e.g. to list fields by their own name whatever table they belong to.
struct VELCOREDATA_EXPORT QualifiedNameCompareLeafValueNoCase {
  bool operator()(const QualifiedName& a, const QualifiedName& b) const;
};

template <>
struct std::hash<QualifiedName> {
  size_t operator()(const QualifiedName& name) const noexcept { return name.Hash(); }
};
