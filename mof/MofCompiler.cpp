// TMofCompiler: a recursive-descent parser of MOF that builds what it reads into a namespace.
#include "mof/MofCompiler.h"

#include "cimxml/states/Support.h"
#include "core/Text.h"
#include "populator/DocumentReader.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

namespace NQRN20 {

namespace {

const char kClass[] = "class";
const char kAssociation[] = "association";
const char kInstance[] = "instance";
const char kOf[] = "of";
const char kAs[] = "as";
const char kRef[] = "ref";
const char kQualifier[] = "qualifier";
const char kScope[] = "scope";
const char kFlavor[] = "flavor";
const char kPolicy[] = "policy";
const char kStructure[] = "structure";
const char kEnumeration[] = "enumeration";
const char kValue[] = "value";
const char kPragma[] = "pragma";
const char kInclude[] = "include";
const char kTrue[] = "true";
const char kFalse[] = "false";
const char kNull[] = "null";
const char kAssociationQualifier[] = "Association";
const char kEmbeddedObjectQualifier[] = "EmbeddedObject";
const char kEmbeddedInstanceQualifier[] = "EmbeddedInstance";
// Real literals the core reads that MOF spells as words.
const char* const kRealWords[] = {"INF", "NaN"};

// Whether the text is the word, in any letter case, as keywords and names are matched.
bool IsWord(std::string_view text, std::string_view word) {
    return text.size() == word.size() && EqualNoCase(text.data(), word.data(), word.size());
}

// The entry of a keyword table whose name is the word, in any letter case; null for none.
template <class TEntry, size_t N>
const TEntry* EntryNamed(const TEntry (&table)[N], std::string_view word) {
    for (const TEntry& entry : table) {
        if (IsWord(word, entry.m_name)) {
            return &entry;
        }
    }
    return nullptr;
}

// The kind of literal a word is, kNone for a word that is no value.
TMofConstant::EKind KeywordKind(std::string_view word) {
    if (IsWord(word, kTrue) || IsWord(word, kFalse)) {
        return TMofConstant::kBoolean;
    }
    if (IsWord(word, kNull)) {
        return TMofConstant::kNull;
    }
    for (const char* real : kRealWords) {
        if (IsWord(word, real)) {
            return TMofConstant::kReal;
        }
    }
    return TMofConstant::kNone;
}

// The literal kind of each token kind that is a value by itself.
TMofConstant::EKind LiteralKind(TMofToken::EKind kind) {
    switch (kind) {
    case TMofToken::kString:
        return TMofConstant::kString;
    case TMofToken::kChar:
        return TMofConstant::kChar;
    case TMofToken::kInteger:
        return TMofConstant::kInteger;
    case TMofToken::kReal:
        return TMofConstant::kReal;
    case TMofToken::kAlias:
        return TMofConstant::kAlias;
    default:
        return TMofConstant::kNone;
    }
}

// The kinds of element without a bit here are known, to be refused as such.
const struct {
    const char* m_name;
    uint32_t m_bits;
} kScopes[] = {
    {kClass, ICIMQualifierDecl::kScopeClass},
    {kAssociation, ICIMQualifierDecl::kScopeAssociation},
    {"indication", ICIMQualifierDecl::kScopeIndication},
    {"property", ICIMQualifierDecl::kScopeProperty},
    {"reference", ICIMQualifierDecl::kScopeReference},
    {"method", ICIMQualifierDecl::kScopeMethod},
    {"parameter", ICIMQualifierDecl::kScopeParameter},
    {"any", ICIMQualifierDecl::kScopeAny},
    {kStructure, 0},
    {kEnumeration, 0},
    {"enumerationvalue", 0},
    {"qualifiertype", 0},
};

// Each flavor keyword sets or clears a bit; the instance flavors have no bit here.
const struct {
    const char* m_name;
    uint32_t m_bit;
    bool m_set;
} kFlavors[] = {
    {"EnableOverride", ICIMQualifierDecl::kFlavorOverridable, true},
    {"DisableOverride", ICIMQualifierDecl::kFlavorOverridable, false},
    {"ToSubclass", ICIMQualifierDecl::kFlavorToSubclass, true},
    {"Restricted", ICIMQualifierDecl::kFlavorToSubclass, false},
    {"Translatable", ICIMQualifierDecl::kFlavorTranslatable, true},
    {"ToInstance", 0, true},
    {"NotToInstance", 0, true},
};

const uint32_t kDefaultFlavor =
    ICIMQualifierDecl::kFlavorOverridable | ICIMQualifierDecl::kFlavorToSubclass;

// A policy states the whole flavor: a qualifier that may not be overridden still passes to
// subclasses, and a restricted one does neither.
const struct {
    const char* m_name;
    uint32_t m_flavor;
} kPolicies[] = {
    {"EnableOverride", kDefaultFlavor},
    {"DisableOverride", ICIMQualifierDecl::kFlavorToSubclass},
    {"Restricted", 0},
};

// Declarations of kinds the namespace has no object for, and how the error names them.
const struct {
    const char* m_name;
    const char* m_kind;
} kUnsupportedDeclarations[] = {
    {kStructure, "structure"},
    {kEnumeration, "enumeration"},
    {kValue, "'value of'"},
};

const char kLogPrefix[] = "MOF ";
const char kNoEffect[] = " has no effect here";
const char kExpected[] = "expected ";
const char kIncludeCycle[] = "include cycle: ";
const char kIncludeTooDeep[] = "includes nest too deep at ";
const char kCannotInclude[] = "cannot read included file ";
const char kUnknownAlias[] = "unknown alias $";
const char kAliasTwice[] = "alias defined twice: $";
const char kUnknownQualifier[] = "unknown qualifier ";
const char kUnknownType[] = "unknown data type ";
const char kRefused[] = "the namespace refused it: ";
const char kNotSupported[] = " not supported";
const char kParameterDefault[] = "a parameter's default value";

std::string Describe(const TMofToken& token) {
    switch (token.m_kind) {
    case TMofToken::kEnd:
        return "end of file";
    case TMofToken::kString:
        return "string \"" + std::string(token.m_text) + "\"";
    case TMofToken::kAlias:
        return "$" + std::string(token.m_text);
    default:
        return "'" + std::string(token.m_text) + "'";
    }
}

// One spelling for each file, so that an include cycle shows; the path as given where the system
// cannot tell.
std::string Canonical(const std::string& path) {
    std::error_code error;
    const std::string canonical = std::filesystem::weakly_canonical(path, error).string();
    return error ? path : canonical;
}

} // namespace

TMofCompiler::TMofCompiler(boost::shared_ptr<ICIMNamespace> ns, TLoadReport& report)
    : m_namespace(std::move(ns)), m_report(report),
      m_aliasLookup([this](std::string_view alias) { return AliasPath(alias); }) {}

void TMofCompiler::Compile(const char* text, size_t length, const std::string& path) {
    TMofLexer lexer(text, length);
    TSource source{path, Canonical(path), nullptr, &lexer, TMofToken(), 0};
    CompileSource(source);
}

// mofSpecification: mofProduction*
void TMofCompiler::CompileSource(TSource& source) {
    TSource* const outer = m_source;
    m_source = &source;
    m_source->m_lexer->Next(m_source->m_token);
    while (m_source->m_token.m_kind != TMofToken::kEnd) {
        m_braceDepth = 0;
        m_ended = false;
        m_keptTexts = 0;
        try {
            Production();
        } catch (const TError& error) {
            LogError(error);
            Recover(m_source->m_token.m_kind == TMofToken::kError);
        } catch (const TQRNException& error) {
            const TMofToken& at = m_source->m_token;
            LogError({at.m_line, at.m_column, kRefused + std::string(error.what())});
            Recover(false);
        }
    }
    m_source = outer;
}

// mofProduction: compilerDirective | classDeclaration | associationDeclaration
//              | qualifierDeclaration | instanceDeclaration
void TMofCompiler::Production() {
    if (Accept('#')) {
        Pragma();
        return;
    }
    if (AcceptKeyword(kQualifier)) {
        QualifierDeclaration();
        return;
    }
    // An include reads its file's declarations from inside a pragma, before this list is read.
    TQualifiers& qualifiers = m_declarationQualifiers;
    QualifierList(qualifiers);
    const TMofToken at = m_source->m_token;
    if (AcceptKeyword(kClass)) {
        ClassDeclaration(qualifiers);
    } else if (AcceptKeyword(kAssociation)) {
        MarkAssociation(qualifiers, at);
        ClassDeclaration(qualifiers);
    } else if (AcceptKeyword(kInstance)) {
        InstanceDeclaration();
    } else {
        RefuseDeclaration();
    }
}

// A declaration of a kind the namespace cannot hold is named as such; the skip after the error
// passes over its body.
void TMofCompiler::RefuseDeclaration() {
    const TMofToken& token = m_source->m_token;
    const auto* kind = token.m_kind == TMofToken::kIdentifier
                           ? EntryNamed(kUnsupportedDeclarations, token.m_text)
                           : nullptr;
    if (kind != nullptr) {
        FailAt(token, kind->m_kind + std::string(" declarations are") + kNotSupported);
    }
    Fail(kExpected + std::string("class, association, instance, qualifier or #pragma"));
}

// Skips to the semicolon that ends the declaration at brace depth 0, and past it, unless the
// declaration was read to its end before the error was found. A text that is no token may have
// swallowed braces with the rest of its line, so after one the skip also ends before a
// declaration's first token at the start of a line.
void TMofCompiler::Recover(bool lexical) {
    TMofToken& token = m_source->m_token;
    while (!m_ended && token.m_kind != TMofToken::kEnd) {
        if (lexical && token.m_kind != TMofToken::kError && StartsDeclaration(token)) {
            return;
        }
        const bool end = token.Is(';') && m_braceDepth <= 0;
        m_braceDepth += token.Is('{') ? 1 : token.Is('}') ? -1 : 0;
        m_source->m_lexer->Next(token);
        if (end) {
            return;
        }
    }
}

// Writers start top-level declarations, and nothing else, at the start of a line.
bool TMofCompiler::StartsDeclaration(const TMofToken& token) {
    if (token.m_column != 1) {
        return false;
    }
    for (const char* keyword :
         {kClass, kAssociation, kInstance, kQualifier, kStructure, kEnumeration}) {
        if (token.m_kind == TMofToken::kIdentifier && IsWord(token.m_text, keyword)) {
            return true;
        }
    }
    return token.Is('#') || token.Is('[');
}

// A text that is no token is reported only where the parser looks at it, so that it costs the
// declaration it is in rather than the one before.
inline void TMofCompiler::Advance() {
    TMofToken& token = m_source->m_token;
    m_ended |= token.Is(';') && m_braceDepth == 0;
    m_braceDepth += token.Is('{') ? 1 : token.Is('}') ? -1 : 0;
    m_source->m_lexer->Next(token);
}

// What the parser expected is less use than why the text there is no token.
void TMofCompiler::Fail(const std::string& text) const {
    const TMofToken& token = m_source->m_token;
    FailAt(token, token.m_kind == TMofToken::kError ? std::string(token.m_text) : text);
}

void TMofCompiler::FailAt(const TMofToken& at, const std::string& text) const {
    throw TError{at.m_line, at.m_column, text};
}

void TMofCompiler::Log(uint32_t level, const std::string& file, uint32_t line, uint32_t column,
                       const std::string& text) {
    const std::string where = file.empty() ? m_report.m_path : file;
    const std::string logged = kLogPrefix + where + ":" + std::to_string(line) + ":" +
                               std::to_string(column) + ": " + text;
    m_report.m_log.push_back({level, line, logged, text, column, file});
    TRootObject::GetCoreLogger()->Log(level, logged);
}

void TMofCompiler::LogError(const TError& error) {
    Log(TLoadReport::kErrorLevel, IncludedPath(), error.m_line, error.m_column, error.m_text);
}

// The file that entries of an included file name; empty for the file loaded: the report names it.
std::string TMofCompiler::IncludedPath() const {
    return m_source->m_outer ? m_source->m_path : std::string();
}

void TMofCompiler::Expect(char punct) {
    if (!m_source->m_token.Is(punct)) {
        Fail(kExpected + std::string("'") + punct + "' but found " + Describe(m_source->m_token));
    }
    Advance();
}

bool TMofCompiler::Accept(char punct) {
    if (!m_source->m_token.Is(punct)) {
        return false;
    }
    Advance();
    return true;
}

bool TMofCompiler::AcceptKeyword(const char* keyword) {
    const TMofToken& token = m_source->m_token;
    if (token.m_kind != TMofToken::kIdentifier || !IsWord(token.m_text, keyword)) {
        return false;
    }
    Advance();
    return true;
}

// A name is the document's text, which outlasts the declaration it is in.
std::string_view TMofCompiler::ExpectIdentifier(const char* what) {
    if (m_source->m_token.m_kind != TMofToken::kIdentifier) {
        Fail(kExpected + std::string(what) + " but found " + Describe(m_source->m_token));
    }
    const std::string_view name = m_source->m_token.m_text;
    Advance();
    return name;
}

// An empty text to keep until the next top-level declaration.
std::string& TMofCompiler::KeptText() {
    if (m_keptTexts == m_texts.size()) {
        m_texts.emplace_back();
    }
    std::string& text = m_texts[m_keptTexts++];
    text.clear();
    return text;
}

// The name as the core takes it, for a call that keeps no reference to it.
const std::string& TMofCompiler::Name(std::string_view name) {
    m_name.assign(name);
    return m_name;
}

// compilerDirective: "#" PRAGMA pragmaName "(" stringValue ")"
// Only include acts here: the namespace to load into is the caller's, and text carries no
// locale, so the others are said once to do nothing.
void TMofCompiler::Pragma() {
    if (!AcceptKeyword(kPragma)) {
        Fail(kExpected + std::string("pragma after '#'"));
    }
    const TMofToken at = m_source->m_token;
    const std::string name(ExpectIdentifier("a pragma name"));
    Expect('(');
    if (m_source->m_token.m_kind != TMofToken::kString) {
        Fail(kExpected + std::string("a string parameter of #pragma ") + name);
    }
    // The string may be the lexer's, which the tokens after it reuse.
    const TMofToken parameterAt = m_source->m_token;
    const std::string parameter(parameterAt.m_text);
    Advance();
    Expect(')');
    if (EqualNoCase(name, kInclude)) {
        // The directive is whole: a file it cannot include costs nothing after it.
        try {
            Include(parameterAt, parameter);
        } catch (const TError& error) {
            LogError(error);
        }
    } else if (m_warnedPragmas.insert(LowerAscii(name)).second) {
        Log(kWarningLevel, IncludedPath(), at.m_line, at.m_column, "#pragma " + name + kNoEffect);
    }
}

// The path is taken relative to the directory of the including file. A file that cannot be
// read, one already being read and one nested too deep are errors of the include itself.
void TMofCompiler::Include(const TMofToken& at, const std::string& name) {
    const std::filesystem::path base = std::filesystem::path(m_source->m_path).parent_path();
    const std::string path =
        std::filesystem::path(name).is_absolute() ? name : (base / name).string();
    const std::string canonical = Canonical(path);
    for (const TSource* source = m_source; source != nullptr; source = source->m_outer) {
        if (source->m_canonical == canonical) {
            FailAt(at, kIncludeCycle + path);
        }
    }
    if (m_source->m_depth + 1 >= kMaxIncludeDepth) {
        FailAt(at, kIncludeTooDeep + path);
    }
    TDocumentBuffer document;
    try {
        uint64_t fileBytes = 0;
        document = ReadAnyDocument(path, fileBytes);
    } catch (const TDocumentReadError& failure) {
        FailAt(at, kCannotInclude + path + ": " + failure.GetReason());
    }
    TMofLexer lexer(document.m_bytes.get(), document.m_length);
    TSource source{path, canonical, m_source, &lexer, TMofToken(), m_source->m_depth + 1};
    CompileSource(source);
    m_braceDepth = 0;
}

// qualifierDeclaration: QUALIFIER qualifierName ":" dataType [array] ["=" initializer]
//                       [","] scope [[","] (FLAVOR "(" flavor ("," flavor)* ")" | policy)] ";"
// Older files put the commas in; newer ones leave them out and give a policy for the flavors.
void TMofCompiler::QualifierDeclaration() {
    const std::string name(ExpectIdentifier("a qualifier name"));
    Expect(':');
    const TMofToken typeAt = m_source->m_token;
    const TCIMValue::TCIMType type = MofDataType(ExpectIdentifier("a data type"));
    if (type == kCIMTypeNone) {
        FailAt(typeAt, kUnknownType + std::string(typeAt.m_text));
    }
    const TCIMValue value = Default(type, true);
    Accept(',');
    const uint32_t scope = Scope();
    const bool comma = Accept(',');
    uint32_t flavor = kDefaultFlavor;
    if (AcceptKeyword(kFlavor)) {
        Expect('(');
        flavor = Flavors(flavor);
    } else if (AcceptKeyword(kPolicy)) {
        flavor = Policy();
    } else if (comma) {
        Fail(kExpected + std::string("Flavor or Policy"));
    }
    Expect(';');
    CommitQualifierDecl(name, value, scope, flavor);
}

void TMofCompiler::CommitQualifierDecl(const std::string& name, const TCIMValue& value,
                                       uint32_t scope, uint32_t flavor) {
    const auto declaration = m_namespace->CreateQualifierDecl(
        name, value, scope, static_cast<ICIMQualifierDecl::EFlavor>(flavor), TCIMOptions());
    if (NCimXml::CommitAllowingDuplicate(declaration)) {
        ++m_report.m_tally.m_qualifierDecls;
    } else {
        m_report.m_tally.m_duplicateQualifierDecls.push_back(name);
    }
}

// scope: SCOPE "(" metaElement ("," metaElement)* ")"
uint32_t TMofCompiler::Scope() {
    if (!AcceptKeyword(kScope)) {
        Fail(kExpected + std::string("Scope"));
    }
    Expect('(');
    uint32_t scope = 0;
    do {
        const TMofToken at = m_source->m_token;
        const std::string_view word = ExpectIdentifier("a scope");
        const auto* const kind = EntryNamed(kScopes, word);
        if (kind == nullptr) {
            FailAt(at, "unknown scope " + std::string(word));
        }
        if (kind->m_bits == 0) {
            FailAt(at, "scope " + std::string(word) + " is" + kNotSupported);
        }
        scope |= kind->m_bits;
    } while (Accept(','));
    Expect(')');
    return scope;
}

// policy: POLICY "(" policyKind ")"
uint32_t TMofCompiler::Policy() {
    Expect('(');
    const TMofToken at = m_source->m_token;
    const std::string_view word = ExpectIdentifier("a policy");
    const auto* const kind = EntryNamed(kPolicies, word);
    if (kind == nullptr) {
        FailAt(at, "unknown policy " + std::string(word));
    }
    Expect(')');
    return kind->m_flavor;
}

// flavor ("," flavor)* ")"
uint32_t TMofCompiler::Flavors(uint32_t flavor) {
    do {
        flavor = ApplyFlavor(flavor, m_source->m_token);
        Advance();
    } while (Accept(','));
    Expect(')');
    return flavor;
}

// The flavor with the keyword's bit set or cleared.
uint32_t TMofCompiler::ApplyFlavor(uint32_t flavor, const TMofToken& keyword) const {
    const auto* const kind =
        keyword.m_kind == TMofToken::kIdentifier ? EntryNamed(kFlavors, keyword.m_text) : nullptr;
    if (kind != nullptr) {
        return kind->m_set ? flavor | kind->m_bit : flavor & ~kind->m_bit;
    }
    const std::string text(keyword.m_text);
    FailAt(keyword, keyword.m_kind == TMofToken::kIdentifier ? "unknown flavor " + text
                    : keyword.m_kind == TMofToken::kError    ? text
                                                             : kExpected + std::string("a flavor"));
}

TMofCompiler::TQualifier& TMofCompiler::TQualifiers::Add() {
    if (m_count == m_entries.size()) {
        m_entries.emplace_back();
    }
    TQualifier& entry = m_entries[m_count++];
    entry.m_value.m_kind = TMofConstant::kNone;
    entry.m_value.m_text = {};
    entry.m_value.m_elements.clear();
    entry.m_flavors.clear();
    return entry;
}

// qualifierList: ["[" qualifier ("," qualifier)* "]"]
// qualifier: qualifierName ["(" constantValue ")" | arrayInitializer] [":" flavor+]
// The list is read into the one given, which is emptied first.
void TMofCompiler::QualifierList(TQualifiers& qualifiers) {
    qualifiers.Clear();
    if (!Accept('[')) {
        return;
    }
    do {
        TQualifier& qualifier = qualifiers.Add();
        qualifier.m_at = m_source->m_token;
        qualifier.m_name = ExpectIdentifier("a qualifier name");
        if (Accept('(')) {
            static_cast<TMofConstant&>(qualifier.m_value) = Constant();
            Expect(')');
        } else if (m_source->m_token.Is('{')) {
            Initializer(qualifier.m_value);
        }
        if (Accept(':')) {
            while (m_source->m_token.m_kind == TMofToken::kIdentifier) {
                qualifier.m_flavors.push_back(m_source->m_token);
                Advance();
            }
        }
    } while (Accept(','));
    Expect(']');
}

// What the text of a string element holds, where one of its qualifiers says so.
EEmbeddedObject TMofCompiler::EmbeddedKind(std::string_view name) {
    return IsWord(name, kEmbeddedInstanceQualifier) ? kEmbeddedInstance
           : IsWord(name, kEmbeddedObjectQualifier) ? kEmbeddedObject
                                                    : kEmbeddedNone;
}

// The last qualifier that says so wins.
EEmbeddedObject TMofCompiler::EmbeddedKind(const TQualifiers& qualifiers) {
    EEmbeddedObject kind = kEmbeddedNone;
    for (const TQualifier& qualifier : qualifiers) {
        const EEmbeddedObject named = EmbeddedKind(qualifier.m_name);
        kind = named != kEmbeddedNone ? named : kind;
    }
    return kind;
}

// A class keeps what a string holds apart from its qualifiers, as CIM-XML does: a stated
// EmbeddedObject or EmbeddedInstance qualifier is kept as stated and changes nothing else,
// while one of null value only says what the text holds. It is taken out of the list.
EEmbeddedObject TMofCompiler::TakeEmbeddedMarker(TQualifiers& qualifiers) {
    EEmbeddedObject kind = kEmbeddedNone;
    qualifiers.RemoveIf([&kind](const TQualifier& qualifier) {
        const EEmbeddedObject marked = qualifier.m_value.m_kind == TMofConstant::kNull
                                           ? EmbeddedKind(qualifier.m_name)
                                           : kEmbeddedNone;
        kind = marked != kEmbeddedNone ? marked : kind;
        return marked != kEmbeddedNone;
    });
    return kind;
}

// Attaches each qualifier with its declaration's type and flavor, the flavor changed by the
// keywords given.
void TMofCompiler::ApplyQualifiers(ICIMNamedElement& element, const TQualifiers& qualifiers) {
    for (const TQualifier& qualifier : qualifiers) {
        boost::shared_ptr<ICIMQualifierDecl> declaration;
        try {
            declaration = m_qualifierDecls.Find(*m_namespace, qualifier.m_name);
        } catch (const TQRNException&) {
        }
        if (!declaration) {
            FailAt(qualifier.m_at, kUnknownQualifier + std::string(qualifier.m_name));
        }
        QualifierValue(qualifier, *declaration, m_qualifierValue);
        uint32_t flavor = declaration->GetFlavor(TCIMOptions());
        for (const TMofToken& keyword : qualifier.m_flavors) {
            flavor = ApplyFlavor(flavor, keyword);
        }
        element.AddQualifier(
            element.CreateQualifier(std::move(declaration), m_qualifierValue,
                                    static_cast<ICIMQualifierDecl::EFlavor>(flavor), TCIMOptions()),
            TCIMOptions());
    }
}

// A qualifier named without a value is true where its type is boolean, else null.
void TMofCompiler::QualifierValue(const TQualifier& qualifier, ICIMQualifierDecl& declaration,
                                  TCIMValue& value) {
    const TCIMValue::TCIMType type = declaration.GetType(TCIMOptions());
    if (qualifier.m_value.m_kind != TMofConstant::kNone) {
        ToValue(qualifier.m_value, qualifier.m_at, type, 0, value);
        return;
    }
    TMofLiteral implied;
    implied.m_kind = type == kCIMTypeBoolean ? TMofConstant::kBoolean : TMofConstant::kNull;
    implied.m_text = kTrue;
    ToValue(implied, qualifier.m_at, type, 0, value);
}

// The class of the name, null where the namespace has none; each caller says why it needs it.
boost::shared_ptr<ICIMClass> TMofCompiler::FindClass(std::string_view name) {
    boost::shared_ptr<ICIMClass> found;
    try {
        found = m_namespace->GetClass(Name(name), TCIMOptions());
    } catch (const TQRNException&) {
    }
    return found;
}

// The class a reference names may be the one being built, which is not yet committed.
boost::shared_ptr<ICIMClass>
TMofCompiler::ReferencedClass(std::string_view name, const TMofToken& at,
                              const boost::shared_ptr<ICIMClass>& building) {
    if (building && IsWord(name, building->GetName(TCIMOptions()))) {
        try {
            return m_namespace->GetClass(Name(name), TCIMOptions());
        } catch (const TQRNException&) {
            return building;
        }
    }
    const boost::shared_ptr<ICIMClass> found = FindClass(name);
    if (!found) {
        FailAt(at, "unknown referenced class " + std::string(name));
    }
    return found;
}

void TMofCompiler::ToValue(const TMofLiteral& literal, const TMofToken& at,
                           TCIMValue::TCIMType type, uint32_t arraySize, TCIMValue& value) {
    try {
        MofLiteralToValue(literal, type, arraySize, m_namespace, m_aliasLookup, m_valueText, value);
    } catch (const TMofValueError& error) {
        FailAt(at, error.what());
    }
}

std::string TMofCompiler::AliasPath(std::string_view alias) const {
    const auto found = m_aliases.find(LowerAscii(std::string(alias)));
    if (found == m_aliases.end()) {
        throw TMofValueError(kUnknownAlias + std::string(alias));
    }
    return found->second;
}

// associationDeclaration: [qualifierList] ASSOCIATION className [":" superClass]
//                         "{" classFeature* "}" ";"
// An association is a class whose Association qualifier is true, unless its list states that
// qualifier; it goes first, where schemas write it.
void TMofCompiler::MarkAssociation(TQualifiers& qualifiers, const TMofToken& at) {
    for (const TQualifier& qualifier : qualifiers) {
        if (IsWord(qualifier.m_name, kAssociationQualifier)) {
            return;
        }
    }
    TQualifier& added = qualifiers.Add();
    added.m_name = kAssociationQualifier;
    added.m_at = at;
    std::rotate(qualifiers.begin(), qualifiers.end() - 1, qualifiers.end());
}

// classDeclaration: [qualifierList] CLASS className [AS aliasIdentifier] [":" superClass]
//                   "{" classFeature* "}" ";"
// A class alias names nothing an instance can refer to, so it is read and dropped.
void TMofCompiler::ClassDeclaration(const TQualifiers& qualifiers) {
    const std::string name(ExpectIdentifier("a class name"));
    if (AcceptKeyword(kAs)) {
        if (m_source->m_token.m_kind != TMofToken::kAlias) {
            Fail(kExpected + std::string("an alias"));
        }
        Advance();
    }
    boost::shared_ptr<ICIMClass> superClass;
    if (Accept(':')) {
        const TMofToken at = m_source->m_token;
        const std::string_view superName = ExpectIdentifier("a superclass name");
        superClass = FindClass(superName);
        if (!superClass) {
            FailAt(at, "unknown superclass " + std::string(superName) + " of class " + name);
        }
    }
    const boost::shared_ptr<ICIMClass> cimClass =
        m_namespace->CreateClass(name, superClass, TCIMOptions());
    ApplyQualifiers(*cimClass, qualifiers);
    Expect('{');
    while (!Accept('}')) {
        ClassFeature(cimClass);
    }
    Expect(';');
    if (NCimXml::CommitAllowingDuplicate(cimClass)) {
        ++m_report.m_tally.m_classes;
    } else {
        m_report.m_tally.m_duplicateClasses.push_back(cimClass->GetName(TCIMOptions()));
    }
}

// classFeature: [qualifierList] (dataType name [array] ["=" initializer]
//             | className REF name ["=" initializer] | dataType name "(" parameters ")") ";"
void TMofCompiler::ClassFeature(const boost::shared_ptr<ICIMClass>& cimClass) {
    TQualifiers& qualifiers = m_featureQualifiers;
    QualifierList(qualifiers);
    const TTypeRef type = TypeRef();
    const std::string_view name = ExpectIdentifier("a property or method name");
    if (!type.m_reference && Accept('(')) {
        MethodDeclaration(cimClass, qualifiers, type.m_type, name);
    } else {
        PropertyDeclaration(cimClass, qualifiers, type.m_type, type.m_at, name);
    }
}

// (dataType | className REF): the type of a property, reference or parameter.
TMofCompiler::TTypeRef TMofCompiler::TypeRef() {
    TTypeRef type{m_source->m_token, ExpectIdentifier("a data type or class name"), false,
                  TCIMValue::TCIMType()};
    type.m_reference = AcceptKeyword(kRef);
    type.m_type =
        type.m_reference ? TCIMValue::TCIMType(kCIMTypeReference) : MofDataType(type.m_name);
    if (type.m_type == kCIMTypeNone) {
        FailAt(type.m_at, kUnknownType + std::string(type.m_name));
    }
    return type;
}

// The rest of a property or reference declaration after its name. The declaration takes its
// qualifiers before its value, as one read from CIM-XML does.
void TMofCompiler::PropertyDeclaration(const boost::shared_ptr<ICIMClass>& cimClass,
                                       TQualifiers& qualifiers, TCIMValue::TCIMType type,
                                       const TMofToken& typeAt, std::string_view name) {
    TCIMValue value = Default(type, type != kCIMTypeReference);
    Expect(';');
    if (type == kCIMTypeReference) {
        value.SetReferencedClass(ReferencedClass(typeAt.m_text, typeAt, cimClass));
    }
    const auto declaration = cimClass->CreatePropertyDecl(Name(name), TCIMValue(), TCIMOptions());
    const EEmbeddedObject kind = TakeEmbeddedMarker(qualifiers);
    if (kind != kEmbeddedNone) {
        declaration->SetEmbeddedObject(kind, TCIMOptions());
    }
    ApplyQualifiers(*declaration, qualifiers);
    declaration->SetValue(value, TCIMOptions());
    try {
        NCimXml::CommitAllowingDuplicate(declaration);
    } catch (const TQRNException& error) {
        FailAt(typeAt, "cannot declare property " + std::string(name) + ": " + error.what());
    }
}

// methodDeclaration: ... dataType methodName "(" [parameter ("," parameter)*] ")" ";"
void TMofCompiler::MethodDeclaration(const boost::shared_ptr<ICIMClass>& cimClass,
                                     const TQualifiers& qualifiers, TCIMValue::TCIMType type,
                                     std::string_view name) {
    const auto method = cimClass->CreateMethodDecl(Name(name), type, TCIMOptions());
    ApplyQualifiers(*method, qualifiers);
    if (!Accept(')')) {
        do {
            Parameter(cimClass, method);
        } while (Accept(','));
        Expect(')');
    }
    Expect(';');
    NCimXml::CommitAllowingDuplicate(method);
}

// parameter: [qualifierList] (dataType | className REF) parameterName [array]
//            ["=" initializer]
void TMofCompiler::Parameter(const boost::shared_ptr<ICIMClass>& cimClass,
                             const boost::shared_ptr<ICIMMethodDecl>& method) {
    TQualifiers& qualifiers = m_parameterQualifiers;
    QualifierList(qualifiers);
    const TTypeRef type = TypeRef();
    if (type.m_reference) {
        ReferencedClass(type.m_name, type.m_at, cimClass);
    }
    const std::string_view name = ExpectIdentifier("a parameter name");
    bool isArray = false;
    const uint32_t arraySize = ArrayShape(isArray);
    if (Accept('=')) {
        ParameterDefault(isArray ? type.m_type.GetArrayType() : type.m_type, arraySize);
    }
    const auto parameter = method->CreateParameterDecl(Name(name), type.m_type, TCIMOptions());
    parameter->SetShape(isArray, arraySize, Name(type.m_reference ? type.m_name : ""),
                        TCIMOptions());
    const EEmbeddedObject kind = TakeEmbeddedMarker(qualifiers);
    if (kind != kEmbeddedNone) {
        parameter->SetEmbeddedObject(kind, TCIMOptions());
    }
    ApplyQualifiers(*parameter, qualifiers);
    NCimXml::CommitAllowingDuplicate(parameter);
}

// The core keeps no default for a parameter: one is checked against the type and dropped, and
// that is said once.
void TMofCompiler::ParameterDefault(TCIMValue::TCIMType type, uint32_t arraySize) {
    const TMofToken valueAt = m_source->m_token;
    Initializer(m_literal);
    TCIMValue checked;
    ToValue(m_literal, valueAt, type, arraySize, checked);
    if (!m_warnedParameterDefault) {
        m_warnedParameterDefault = true;
        Log(kWarningLevel, IncludedPath(), valueAt.m_line, valueAt.m_column,
            kParameterDefault + std::string(kNoEffect));
    }
}

// [array] ["=" initializer]: the default, of the type with the array shape, null without an
// initializer. References take no array shape.
TCIMValue TMofCompiler::Default(TCIMValue::TCIMType type, bool shaped) {
    bool isArray = false;
    const uint32_t arraySize = shaped ? ArrayShape(isArray) : 0;
    type = isArray ? type.GetArrayType() : type;
    if (!Accept('=')) {
        return TCIMValue(type, arraySize);
    }
    const TMofToken valueAt = m_source->m_token;
    Initializer(m_literal);
    TCIMValue value;
    ToValue(m_literal, valueAt, type, arraySize, value);
    return value;
}

// array: "[" [positiveDecimalValue] "]"; the size, 0 for none.
uint32_t TMofCompiler::ArrayShape(bool& isArray) {
    isArray = Accept('[');
    if (!isArray || Accept(']')) {
        return 0;
    }
    const TMofToken at = m_source->m_token;
    uint64_t size = 0;
    try {
        size = at.m_kind == TMofToken::kInteger ? std::stoull(MofIntegerToDecimal(at.m_text)) : 0;
    } catch (const std::exception&) {
    }
    if (size == 0 || size > UINT32_MAX || at.m_text[0] == '-') {
        FailAt(at, kExpected + std::string("an array size but found ") + Describe(at));
    }
    Advance();
    Expect(']');
    return uint32_t(size);
}

// instanceDeclaration: [qualifierList] INSTANCE OF className [AS aliasIdentifier]
//                      "{" valueInitializer* "}" ";"
void TMofCompiler::InstanceDeclaration() {
    if (!AcceptKeyword(kOf)) {
        Fail(kExpected + std::string("'of' after 'instance'"));
    }
    const TMofToken at = m_source->m_token;
    const std::string_view className = ExpectIdentifier("a class name");
    std::string alias;
    if (AcceptKeyword(kAs)) {
        if (m_source->m_token.m_kind != TMofToken::kAlias) {
            Fail(kExpected + std::string("an alias"));
        }
        alias = m_source->m_token.m_text;
        if (m_aliases.count(LowerAscii(alias)) != 0) {
            Fail(kAliasTwice + alias);
        }
        Advance();
    }
    const boost::shared_ptr<ICIMClass> cimClass = FindClass(className);
    if (!cimClass) {
        FailAt(at, "unknown class " + std::string(className));
    }
    const auto instance = cimClass->CreateInstance(TCIMOptions());
    Expect('{');
    while (!Accept('}')) {
        ValueInitializer(instance);
    }
    Expect(';');
    CommitInstance(instance, alias, at);
}

void TMofCompiler::CommitInstance(const boost::shared_ptr<ICIMInstance>& instance,
                                  const std::string& alias, const TMofToken& at) {
    bool added = true;
    try {
        instance->Commit(TCIMOptions());
    } catch (const TQRNException& error) {
        if (error.GetStatus() != kQRNStatusAlreadyExists) {
            FailAt(at, "cannot create instance: " + std::string(error.what()));
        }
        added = false;
    }
    // As a class defined again, a second instance of the same name is only counted; its alias
    // names the instance that stands.
    const std::string path = NCimXml::InstancePathText(*instance);
    if (added) {
        ++m_report.m_tally.m_instances;
    } else {
        m_report.m_tally.m_duplicateInstances.push_back(path);
    }
    if (!alias.empty()) {
        m_aliases[LowerAscii(alias)] = path;
    }
}

// valueInitializer: [qualifierList] propertyName "=" initializer ";"
// Of an instance's qualifiers only those saying what a string holds have a place to go.
void TMofCompiler::ValueInitializer(const boost::shared_ptr<ICIMInstance>& instance) {
    TQualifiers& qualifiers = m_featureQualifiers;
    QualifierList(qualifiers);
    const TMofToken at = m_source->m_token;
    const std::string name(ExpectIdentifier("a property name"));
    Expect('=');
    const TMofToken valueAt = m_source->m_token;
    Initializer(m_literal);
    Expect(';');
    boost::shared_ptr<ICIMPropertyDecl> declaration;
    try {
        declaration = instance->GetClass(TCIMOptions())->GetPropertyDecl(name, TCIMOptions());
    } catch (const TQRNException&) {
    }
    if (!declaration) {
        FailAt(at, "no property " + name + " in class " +
                       instance->GetClass(TCIMOptions())->GetName(TCIMOptions()));
    }
    // An instance's array is as long as its elements: the declared size belongs to the class.
    ToValue(m_literal, valueAt, declaration->GetType(TCIMOptions()), 0, m_propertyValue);
    instance->SetPropertyValue(name, m_propertyValue, TCIMOptions());
    const EEmbeddedObject kind = EmbeddedKind(qualifiers);
    if (kind != kEmbeddedNone) {
        instance->SetPropertyEmbeddedObject(name, kind, TCIMOptions());
    }
}

// initializer: constantValue | arrayInitializer | aliasIdentifier
// arrayInitializer: "{" [constantValue ("," constantValue)*] "}"
// Arrays hold only constants, so literals nest one level at most. Read into the literal given,
// whose room for elements serves again.
void TMofCompiler::Initializer(TMofLiteral& literal) {
    literal.m_elements.clear();
    if (!Accept('{')) {
        static_cast<TMofConstant&>(literal) = Constant();
        return;
    }
    literal.m_kind = TMofConstant::kArray;
    literal.m_text = {};
    if (!Accept('}')) {
        do {
            literal.m_elements.push_back(Constant());
        } while (Accept(','));
        Expect('}');
    }
}

// constantValue: integerValue | realValue | charValue | stringValue+ | booleanValue
//              | nullValue | aliasIdentifier
TMofConstant TMofCompiler::Constant() {
    TMofToken& token = m_source->m_token;
    TMofConstant literal;
    literal.m_kind = token.m_kind == TMofToken::kIdentifier ? KeywordKind(token.m_text)
                                                            : LiteralKind(token.m_kind);
    if (literal.m_kind == TMofConstant::kNone) {
        Fail(kExpected + std::string("a value but found ") + Describe(token));
    }
    literal.m_text = token.m_text;
    if (token.m_transient) {
        literal.m_text = KeptText().assign(token.m_text);
    }
    Advance();
    if (literal.m_kind == TMofConstant::kString && token.m_kind == TMofToken::kString) {
        std::string& joined = KeptText().assign(literal.m_text);
        while (token.m_kind == TMofToken::kString) {
            joined += token.m_text;
            Advance();
        }
        literal.m_text = joined;
    }
    return literal;
}

} // namespace NQRN20
