// TMofCompiler: a recursive-descent parser of MOF that builds what it reads into a namespace.
#pragma once

#include "cimxml/QualifierDecls.h"
#include "core/Core.h"
#include "mof/MofLexer.h"
#include "mof/MofValues.h"
#include "populator/LoadReport.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace NQRN20 {

// One compiler reads one file, and the files it includes, into the namespace. An error is
// logged with its file, line and column and costs the top-level declaration it is found in:
// the compiler skips to that declaration's closing semicolon and goes on.
class TMofCompiler {
public:
    // Includes nest at most this deep, which also ends any cycle the path check misses.
    static constexpr uint32_t kMaxIncludeDepth = 32;
    static constexpr uint32_t kWarningLevel = 2;

    TMofCompiler(boost::shared_ptr<ICIMNamespace> ns, TLoadReport& report);
    TMofCompiler(const TMofCompiler&) = delete;
    TMofCompiler& operator=(const TMofCompiler&) = delete;

    // Compiles the document, which must end with a zero byte, read from the path.
    void Compile(const char* text, size_t length, const std::string& path);

    // An error at a place in a file; thrown inside the compiler, logged by it.
    struct TError {
        uint32_t m_line;
        uint32_t m_column;
        std::string m_text;
    };

private:
    struct TQualifier {
        std::string_view m_name;
        TMofLiteral m_value;
        std::vector<TMofToken> m_flavors;
        TMofToken m_at;
    };
    // A qualifier list that keeps the room of its entries, their arrays and flavors included,
    // for the lists after it.
    class TQualifiers {
    public:
        void Clear() { m_count = 0; }
        // A new, empty entry at the end.
        TQualifier& Add();
        // Takes out the entries picked, in one pass, keeping their room behind the others.
        template <class TPicked>
        void RemoveIf(TPicked picked) {
            TQualifier* kept = begin();
            for (TQualifier* entry = begin(); entry != end(); ++entry) {
                if (!picked(*entry)) {
                    if (kept != entry) {
                        std::swap(*kept, *entry);
                    }
                    ++kept;
                }
            }
            m_count = size_t(kept - begin());
        }
        TQualifier* begin() { return m_entries.data(); }
        TQualifier* end() { return m_entries.data() + m_count; }
        const TQualifier* begin() const { return m_entries.data(); }
        const TQualifier* end() const { return m_entries.data() + m_count; }

    private:
        std::vector<TQualifier> m_entries;
        size_t m_count = 0;
    };

    // A type as written: where, its name, and whether it is a reference to that class.
    struct TTypeRef {
        TMofToken m_at;
        std::string_view m_name;
        bool m_reference;
        TCIMValue::TCIMType m_type;
    };

    // The file being read: its lexer, and the token after what has been consumed.
    struct TSource {
        std::string m_path;
        // What the path resolves to, to tell an include cycle.
        std::string m_canonical;
        TSource* m_outer;
        TMofLexer* m_lexer;
        TMofToken m_token;
        uint32_t m_depth;
    };

    void CompileSource(TSource& source);
    void Production();
    [[noreturn]] void RefuseDeclaration();
    void Recover(bool lexical);
    static bool StartsDeclaration(const TMofToken& token);
    void Advance();
    [[noreturn]] void Fail(const std::string& text) const;
    [[noreturn]] void FailAt(const TMofToken& at, const std::string& text) const;
    void Log(uint32_t level, const std::string& file, uint32_t line, uint32_t column,
             const std::string& text);
    void LogError(const TError& error);
    std::string IncludedPath() const;
    void Expect(char punct);
    bool Accept(char punct);
    bool AcceptKeyword(const char* keyword);
    std::string_view ExpectIdentifier(const char* what);
    std::string& KeptText();
    const std::string& Name(std::string_view name);

    void Pragma();
    void Include(const TMofToken& at, const std::string& name);
    void QualifierDeclaration();
    void CommitQualifierDecl(const std::string& name, const TCIMValue& value, uint32_t scope,
                             uint32_t flavor);
    uint32_t Scope();
    uint32_t Policy();
    uint32_t Flavors(uint32_t flavor);
    [[nodiscard]] uint32_t ApplyFlavor(uint32_t flavor, const TMofToken& keyword) const;
    void QualifierList(TQualifiers& qualifiers);
    void MarkAssociation(TQualifiers& qualifiers, const TMofToken& at);
    void ClassDeclaration(const TQualifiers& qualifiers);
    void ClassFeature(const boost::shared_ptr<ICIMClass>& cimClass);
    TTypeRef TypeRef();
    void PropertyDeclaration(const boost::shared_ptr<ICIMClass>& cimClass, TQualifiers& qualifiers,
                             TCIMValue::TCIMType type, const TMofToken& typeAt,
                             std::string_view name);
    void MethodDeclaration(const boost::shared_ptr<ICIMClass>& cimClass,
                           const TQualifiers& qualifiers, TCIMValue::TCIMType type,
                           std::string_view name);
    void Parameter(const boost::shared_ptr<ICIMClass>& cimClass,
                   const boost::shared_ptr<ICIMMethodDecl>& method);
    void ParameterDefault(TCIMValue::TCIMType type, uint32_t arraySize);
    void InstanceDeclaration();
    void ValueInitializer(const boost::shared_ptr<ICIMInstance>& instance);
    TCIMValue Default(TCIMValue::TCIMType type, bool shaped);
    uint32_t ArrayShape(bool& isArray);
    void Initializer(TMofLiteral& literal);
    TMofConstant Constant();

    boost::shared_ptr<ICIMClass> FindClass(std::string_view name);
    boost::shared_ptr<ICIMClass> ReferencedClass(std::string_view name, const TMofToken& at,
                                                 const boost::shared_ptr<ICIMClass>& building);
    static EEmbeddedObject EmbeddedKind(std::string_view name);
    static EEmbeddedObject EmbeddedKind(const TQualifiers& qualifiers);
    static EEmbeddedObject TakeEmbeddedMarker(TQualifiers& qualifiers);
    void ApplyQualifiers(ICIMNamedElement& element, const TQualifiers& qualifiers);
    void QualifierValue(const TQualifier& qualifier, ICIMQualifierDecl& declaration,
                        TCIMValue& value);
    // The literal as the type into the value given, whose room for a string serves again.
    void ToValue(const TMofLiteral& literal, const TMofToken& at, TCIMValue::TCIMType type,
                 uint32_t arraySize, TCIMValue& value);
    std::string AliasPath(std::string_view alias) const;
    void CommitInstance(const boost::shared_ptr<ICIMInstance>& instance, const std::string& alias,
                        const TMofToken& at);

    boost::shared_ptr<ICIMNamespace> m_namespace;
    TQualifierDecls m_qualifierDecls;
    TLoadReport& m_report;
    TSource* m_source = nullptr;
    // Braces opened since the top-level declaration began, for the skip after an error.
    int32_t m_braceDepth = 0;
    // The declaration's closing semicolon has been read: an error found after it skips nothing.
    bool m_ended = false;
    // The lowered alias names and the paths they stand for, and the lookup values are given.
    std::map<std::string, std::string> m_aliases;
    const TAliasLookup m_aliasLookup;
    // The pragmas said once to have no effect, lowered, and whether parameter defaults have been.
    std::set<std::string> m_warnedPragmas;
    bool m_warnedParameterDefault = false;
    // The qualifier lists of a declaration, of a feature or value in it, and of a parameter;
    // reused, with their room, by the declarations after.
    TQualifiers m_declarationQualifiers;
    TQualifiers m_featureQualifiers;
    TQualifiers m_parameterQualifiers;
    // The initializer of a default or an instance's value, with its room for array elements.
    TMofLiteral m_literal;
    // The texts of the declaration being read that are not the document's, such as strings with
    // escapes; the first m_keptTexts are in use, the rest keep their room for the next ones. A
    // deque, so that a text stays where it is as others are added.
    std::deque<std::string> m_texts;
    size_t m_keptTexts = 0;
    // The name handed to a core call, which copies it, and the text of a value.
    std::string m_name;
    std::string m_valueText;
    // The values of a qualifier and of an instance's property, which the core copies: kept, so
    // that a string of one is made in the room of the one before.
    TCIMValue m_qualifierValue;
    TCIMValue m_propertyValue;
};

} // namespace NQRN20
