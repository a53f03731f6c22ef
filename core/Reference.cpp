// TCIMReference: building, comparing, and reading and writing model paths.
#include "core/Interfaces.h"
#include "core/Status.h"
#include "core/Text.h"
#include "core/Value.h"

#include <utility>

namespace NQRN20 {

namespace {

[[noreturn]] void Invalid() {
    throw TQRNException(kQRNStatusInvalidValue);
}

bool IsNameStart(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool IsName(const std::string& name) {
    if (name.empty() || !IsNameStart(name[0])) {
        return false;
    }
    for (char c : name) {
        if (!IsNameStart(c) && !(c >= '0' && c <= '9')) {
            return false;
        }
    }
    return true;
}

// A key value as written in a path, before its type is known.
struct TKeyLiteral {
    enum EKind { kKindBare, kKindString, kKindChar };
    EKind kind = kKindBare;
    std::string text; // the content, quotes and escapes removed
};

char Unescape(char c) {
    switch (c) {
    case 'n':
        return '\n';
    case 't':
        return '\t';
    case 'r':
        return '\r';
    case 'b':
        return '\b';
    case 'f':
        return '\f';
    default:
        return c;
    }
}

// Reads a quoted literal starting at the quote; leaves pos after the closing quote.
std::string ReadQuoted(const std::string& path, std::string::size_type& pos) {
    const char quote = path[pos++];
    std::string text;
    while (pos < path.size() && path[pos] != quote) {
        if (path[pos] == '\\' && pos + 1 < path.size()) {
            ++pos;
            text += Unescape(path[pos]);
        } else {
            text += path[pos];
        }
        ++pos;
    }
    if (pos == path.size()) {
        Invalid();
    }
    ++pos;
    return text;
}

TKeyLiteral ReadLiteral(const std::string& path, std::string::size_type& pos) {
    TKeyLiteral literal;
    if (pos < path.size() && (path[pos] == '"' || path[pos] == '\'')) {
        literal.kind = path[pos] == '"' ? TKeyLiteral::kKindString : TKeyLiteral::kKindChar;
        literal.text = ReadQuoted(path, pos);
        return literal;
    }
    const std::string::size_type end = std::min(path.find(',', pos), path.size());
    literal.text = path.substr(pos, end - pos);
    pos = end;
    return literal;
}

// The declared type of a key property, or kCIMTypeNone when the namespace cannot tell.
TCIMType DeclaredKeyType(const boost::shared_ptr<ICIMNamespace>& cimNamespace,
                         const std::string& className, const std::string& keyName) {
    if (!cimNamespace) {
        return kCIMTypeNone;
    }
    try {
        const boost::shared_ptr<ICIMClass> cimClass =
            cimNamespace->GetClass(className, TCIMOptions());
        const boost::shared_ptr<ICIMPropertyDecl> decl =
            cimClass ? cimClass->GetPropertyDecl(keyName, TCIMOptions()) : nullptr;
        return decl ? decl->GetType(TCIMOptions()) : TCIMType(kCIMTypeNone);
    } catch (const TQRNException& e) {
        if (e.GetStatus() != kQRNStatusNotFound) {
            throw;
        }
        return kCIMTypeNone;
    }
}

// Without a declared type, the literal's own form decides: quotes make a string or a char16,
// true/false a boolean, a leading minus a sint64, a fraction or exponent a real64.
TCIMType LiteralType(const TKeyLiteral& literal) {
    if (literal.kind == TKeyLiteral::kKindString) {
        return kCIMTypeString;
    }
    if (literal.kind == TKeyLiteral::kKindChar) {
        return kCIMTypeChar16;
    }
    const std::string& t = literal.text;
    if (EqualNoCase(t, "true") || EqualNoCase(t, "false")) {
        return kCIMTypeBoolean;
    }
    const bool hex = t.find("0x") != std::string::npos || t.find("0X") != std::string::npos;
    if (!hex && t.find_first_of(".eEIiNn") != std::string::npos) {
        return kCIMTypeReal64;
    }
    return !t.empty() && t[0] == '-' ? kCIMTypeSint64 : kCIMTypeUint64;
}

TCIMValue KeyValue(const TKeyLiteral& literal, TCIMType declared,
                   const boost::shared_ptr<ICIMNamespace>& cimNamespace) {
    const TCIMType type = declared == kCIMTypeNone ? LiteralType(literal) : declared;
    if (literal.kind == TKeyLiteral::kKindBare && literal.text.empty()) {
        return TCIMValue(type, 0);
    }
    return TCIMValue(type, literal.text, cimNamespace);
}

std::string Quote(const std::string& text, char quote) {
    std::string quoted(1, quote);
    for (char c : text) {
        if (c == quote || c == '\\') {
            quoted += '\\';
        }
        quoted += c;
    }
    return quoted + quote;
}

std::string KeyText(const TCIMValue& value) {
    switch (value.GetType()) {
    case kCIMTypeString:
    case kCIMTypeDateTime:
    case kCIMTypeReference:
        return value.IsNull() ? std::string() : Quote(value.ToString(), '"');
    case kCIMTypeChar16:
        return value.IsNull() ? std::string() : Quote(value.ToString(), '\'');
    default:
        return value.ToString();
    }
}

} // namespace

TCIMReference::TCIMReference(const boost::shared_ptr<ICIMNamespace>& cimNamespace,
                             const std::map<std::string, TCIMValue>& keys) {
    SetNamespace(cimNamespace);
    for (const auto& key : keys) {
        AddKeyValue(key.first, key.second);
    }
}

void TCIMReference::SetNamespace(const boost::shared_ptr<ICIMNamespace>& cimNamespace) {
    m_namespace = cimNamespace;
    m_namespaceName = cimNamespace ? cimNamespace->GetName(TCIMOptions()) : std::string();
}

void TCIMReference::AddKeyValue(std::string name, TCIMValue value) {
    if (name.empty()) {
        throw TQRNException(kQRNStatusInvalidArgument);
    }
    for (auto it = m_keys.begin(); it != m_keys.end(); ++it) {
        if (EqualNoCase(it->first, name)) {
            m_keys.erase(it);
            break;
        }
    }
    m_keys.emplace(std::move(name), std::move(value));
}

TCIMReference TCIMReference::FromPath(const std::string& path,
                                      const boost::shared_ptr<ICIMNamespace>& cimNamespace) {
    const std::string t = TrimXmlSpace(path);
    TCIMReference reference;
    // Names hold no ':', so the last one before the first key value ends the namespace path.
    const std::string::size_type colon = t.rfind(':', t.find('='));
    std::string::size_type pos = 0;
    if (colon != std::string::npos) {
        std::string namespacePath = t.substr(0, colon);
        if (namespacePath.compare(0, 2, "//") == 0) {
            const std::string::size_type slash = namespacePath.find('/', 2);
            reference.m_host = namespacePath.substr(2, slash - 2);
            namespacePath =
                slash == std::string::npos ? std::string() : namespacePath.substr(slash + 1);
        }
        reference.m_namespaceName = namespacePath;
        if (cimNamespace && EqualNoCase(namespacePath, cimNamespace->GetName(TCIMOptions()))) {
            reference.m_namespace = cimNamespace;
        }
        pos = colon + 1;
    } else if (cimNamespace) {
        reference.SetNamespace(cimNamespace);
    }

    const std::string::size_type dot = std::min(t.find('.', pos), t.size());
    reference.m_className = t.substr(pos, dot - pos);
    if (!IsName(reference.m_className)) {
        Invalid();
    }
    pos = dot;
    while (pos < t.size()) {
        ++pos; // the '.' before the first key, the ',' before the others
        const std::string::size_type equals = t.find('=', pos);
        if (equals == std::string::npos) {
            Invalid();
        }
        const std::string name = t.substr(pos, equals - pos);
        if (!IsName(name)) {
            Invalid();
        }
        pos = equals + 1;
        const TKeyLiteral literal = ReadLiteral(t, pos);
        if (pos < t.size() && t[pos] != ',') {
            Invalid();
        }
        const TCIMType declared = DeclaredKeyType(cimNamespace, reference.m_className, name);
        reference.AddKeyValue(name, KeyValue(literal, declared, cimNamespace));
    }
    return reference;
}

std::string TCIMReference::ToString() const {
    std::string text;
    if (!m_host.empty()) {
        text += "//" + m_host + "/";
    }
    if (!m_namespaceName.empty()) {
        text += m_namespaceName + ":";
    }
    text += m_className;
    char separator = '.';
    for (const auto& key : m_keys) {
        text += separator + key.first + '=' + KeyText(key.second);
        separator = ',';
    }
    return text;
}

bool TCIMReference::operator==(const TCIMReference& other) const {
    if (!EqualNoCase(m_host, other.m_host) ||
        !EqualNoCase(m_namespaceName, other.m_namespaceName) ||
        !EqualNoCase(m_className, other.m_className) || m_keys.size() != other.m_keys.size()) {
        return false;
    }
    for (const auto& key : m_keys) {
        bool matched = false;
        for (const auto& otherKey : other.m_keys) {
            if (EqualNoCase(key.first, otherKey.first)) {
                matched = key.second == otherKey.second;
                break;
            }
        }
        if (!matched) {
            return false;
        }
    }
    return true;
}

} // namespace NQRN20
