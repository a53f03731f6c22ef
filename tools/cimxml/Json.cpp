// TJson: building, comparing and writing JSON values.
#include "tools/cimxml/Json.h"
#include "tools/cimxml/Quote.h"

#include "core/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace NQRN20 {

TJson TJson::Number(uint64_t value) {
    TJson number(kNumber);
    number.m_text = std::to_string(value);
    return number;
}

TJson TJson::Number(int64_t value) {
    TJson number(kNumber);
    number.m_text = std::to_string(value);
    return number;
}

// The fewest digits that read back as the same double; JSON has no word for infinities or NaN.
TJson TJson::Number(double value) {
    if (!std::isfinite(value)) {
        return TJson();
    }
    char text[32];
    TJson number(kNumber);
    number.m_text.assign(text, std::to_chars(text, text + sizeof text, value).ptr);
    return number;
}

TJson& TJson::Push(TJson value) {
    m_members.emplace_back(std::string(), std::move(value));
    return m_members.back().second;
}

TJson& TJson::Set(const std::string& name, TJson value) {
    for (auto& member : m_members) {
        if (EqualNoCase(member.first, name)) {
            member.second = std::move(value);
            return member.second;
        }
    }
    m_members.emplace_back(name, std::move(value));
    return m_members.back().second;
}

TJson& TJson::Append(std::string name, TJson value) {
    m_members.emplace_back(std::move(name), std::move(value));
    return m_members.back().second;
}

const TJson* TJson::Find(const std::string& name) const {
    for (const auto& member : m_members) {
        if (EqualNoCase(member.first, name)) {
            return &member.second;
        }
    }
    return nullptr;
}

void TJson::SortByName() {
    const bool array = m_kind == kArray;
    std::stable_sort(m_members.begin(), m_members.end(), [array](const auto& a, const auto& b) {
        const std::string& left = array ? a.second.m_text : a.first;
        const std::string& right = array ? b.second.m_text : b.first;
        return LowerAscii(left) < LowerAscii(right);
    });
}

bool TJson::operator==(const TJson& other) const {
    return m_kind == other.m_kind && m_text == other.m_text && m_members == other.m_members;
}

std::string JsonQuote(const std::string& text) {
    return QuoteEscaped(text, "\\u%04x");
}

std::string TJson::Compact() const {
    std::string out;
    WriteCompact(out);
    return out;
}

void TJson::WriteCompact(std::string& out) const {
    switch (m_kind) {
    case kNull:
        out += "null";
        return;
    case kString:
        out += JsonQuote(m_text);
        return;
    case kBoolean:
    case kNumber:
        out += m_text;
        return;
    default:
        break;
    }
    out += m_kind == kArray ? '[' : '{';
    for (size_t i = 0; i < m_members.size(); ++i) {
        out += i == 0 ? "" : ", ";
        if (m_kind == kObject) {
            out += JsonQuote(m_members[i].first) + ": ";
        }
        m_members[i].second.WriteCompact(out);
    }
    out += m_kind == kArray ? ']' : '}';
}

void TJson::Write(std::ostream& out, unsigned depth) const {
    if ((m_kind != kArray && m_kind != kObject) || m_members.empty()) {
        out << Compact();
        return;
    }
    const std::string indent(2 * (depth + 1), ' ');
    out << (m_kind == kArray ? "[\n" : "{\n");
    for (size_t i = 0; i < m_members.size(); ++i) {
        out << indent;
        if (m_kind == kObject) {
            out << JsonQuote(m_members[i].first) << ": ";
        }
        m_members[i].second.Write(out, depth + 1);
        out << (i + 1 < m_members.size() ? ",\n" : "\n");
    }
    out << std::string(2 * depth, ' ') << (m_kind == kArray ? ']' : '}');
}

} // namespace NQRN20
