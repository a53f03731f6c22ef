// The states of qualifiers, qualifier declarations and their scopes.
#include "cimxml/states/Qualifiers.h"

#include "cimxml/Names.h"
#include "cimxml/states/Support.h"
#include "cimxml/states/Values.h"
#include "core/Text.h"

namespace NQRN20 {

using namespace NCimXml;

namespace {

enum EQualifierDeclarationPhase { kPhaseScope = 0, kPhaseValues = 1 };

const char kExpectedScope[] = "Expected SCOPE element";
const char kIncompatibleAttributes[] = "Incompatible attributes";
const char kCouldntAttachQualifier[] = "Couldn't attach qualifier ";

const char kTrue[] = "true";
const char kFalse[] = "false";

// A scope attribute is "true" or "false"; any other value is reported and applies nowhere.
bool ScopeApplies(TCIMXMLParser& parser, const TAttributeMap::value_type& attribute) {
    if (EqualNoCase(attribute.second, kTrue)) {
        return true;
    }
    if (!EqualNoCase(attribute.second, kFalse)) {
        parser.LogError("Invalid value '" + attribute.second + "' for scope " + attribute.first);
    }
    return false;
}

// The namespace lives only as long as the parser's caller keeps it; one that is gone holds no
// declarations and takes none.
boost::shared_ptr<ICIMNamespace> RequireNamespace(TCIMXMLParser& parser) {
    const boost::shared_ptr<ICIMNamespace> cimNamespace = parser.LockNamespace();
    if (!cimNamespace) {
        throw TQRNException(kQRNStatusNotFound);
    }
    return cimNamespace;
}

} // namespace

// QUALIFIER: (VALUE | VALUE.ARRAY)*
void TCIMXMLParser::TStateQualifier::ProcessAttributes(TCIMXMLParser& parser,
                                                       TAttributeMap& attributes) {
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        parser.HandleCIMName(it, &m_name);
    }
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        parser.HandleCIMType(it, &m_type) || parser.HandlePropagated(it, m_propagated) ||
            parser.HandleQualifierFlavor(it, &m_flavor);
    }
}

// The value is parsed with the qualifier's own type, whatever its declaration says.
void TCIMXMLParser::TStateQualifier::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                  TAttributeMap& attributes) {
    if (name == kValue) {
        m_valueSeen = true;
        parser.PushState(new (parser) TStateValue(parser, &m_value, m_type), attributes);
    } else if (name == kValueArray) {
        m_valueSeen = true;
        parser.PushState(new (parser) TStateValueArray(&m_value, m_type, 0), attributes);
    } else {
        parser.RejectElement(name);
    }
}

// The declaration is looked up even where nothing is attached, so that a qualifier nobody
// declared is always reported.
void TCIMXMLParser::TStateQualifier::EndElement(TCIMXMLParser& parser, const std::string&) {
    boost::shared_ptr<ICIMQualifierDecl> declaration =
        LookUpOrLog(kCouldntFindQualifier, m_name, [&] {
            return parser.m_qualifierDecls.Find(*RequireNamespace(parser), m_name);
        });
    // A propagated qualifier stays with the element it was inherited from. Nothing is attached
    // to an owner that was not created: that is reported with the owner's element.
    if (!m_propagated && m_owner) {
        if (!m_valueSeen) {
            m_value = TCIMValue(declaration->GetType(TCIMOptions()), 0);
        }
        // Refused (a value of another type than declared, say): said, lest it vanish unseen.
        try {
            m_owner->AddQualifier(
                m_owner->CreateQualifier(std::move(declaration), m_value, m_flavor, TCIMOptions()),
                TCIMOptions());
        } catch (const TQRNException& error) {
            parser.FatalError(kCouldntAttachQualifier + m_name + ": " + error.what());
        }
    }
    parser.PopState();
}

// QUALIFIER.DECLARATION: SCOPE, (VALUE | VALUE.ARRAY)*
// The array bit is added only after the walk, so the attributes may come in any order.
void TCIMXMLParser::TStateQualifierDeclaration::ProcessAttributes(TCIMXMLParser& parser,
                                                                  TAttributeMap& attributes) {
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        if (parser.HandleCIMName(it, &m_name) || parser.HandleCIMType(it, &m_type)) {
            continue;
        }
        if (it->first == kAttrIsArray) {
            m_isArray = ConvertBool(it->second);
            m_isArrayGiven = true;
            continue;
        }
        parser.HandleArraySize(it, m_arraySize) || parser.HandleQualifierFlavor(it, &m_flavor);
    }
    if (m_isArray) {
        m_type = m_type.GetArrayType();
    }
}

void TCIMXMLParser::TStateQualifierDeclaration::StartElement(TCIMXMLParser& parser,
                                                             const std::string& name,
                                                             TAttributeMap& attributes) {
    switch (m_phase) {
    case kPhaseScope:
        if (name != kScope) {
            parser.FatalError(kExpectedScope);
        }
        m_phase = kPhaseValues;
        parser.PushState(new (parser) TStateScope(this), attributes);
        return;
    case kPhaseValues:
        if (name == kValue) {
            m_valueSeen = true;
            parser.PushState(new (parser) TStateValue(parser, &m_value, m_type), attributes);
        } else if (name == kValueArray) {
            m_valueSeen = true;
            parser.PushState(new (parser) TStateValueArray(&m_value, m_type, m_arraySize),
                             attributes);
        } else {
            parser.RejectElement(name);
        }
        return;
    default:
        parser.ReportStateCorrupt();
    }
}

// An explicit isarray must agree with arraysize and the default; a default must be an array
// exactly when arraysize is given.
bool TCIMXMLParser::TStateQualifierDeclaration::HasCompatibleArrayAttributes() const {
    if (m_isArrayGiven) {
        if (m_arraySize != 0 && !m_isArray) {
            return false;
        }
        if (m_valueSeen && m_value.IsArray() != m_isArray) {
            return false;
        }
    }
    return !m_valueSeen || m_value.IsArray() == (m_arraySize != 0);
}

void TCIMXMLParser::TStateQualifierDeclaration::EndElement(TCIMXMLParser& parser,
                                                           const std::string&) {
    if (!HasCompatibleArrayAttributes()) {
        parser.FatalError(kIncompatibleAttributes);
    }
    if (!m_valueSeen) {
        m_value = TCIMValue(m_type, m_arraySize);
    }
    if (CommitAllowingDuplicate(RequireNamespace(parser)->CreateQualifierDecl(
            m_name, m_value, m_scope, m_flavor, TCIMOptions()))) {
        ++parser.m_tally.m_qualifierDecls;
    } else {
        parser.m_tally.m_duplicateQualifierDecls.push_back(m_name);
    }
    parser.PopState();
}

// SCOPE: EMPTY
void TCIMXMLParser::TStateScope::ProcessAttributes(TCIMXMLParser& parser,
                                                   TAttributeMap& attributes) {
    for (const auto& attribute : attributes) {
        uint32_t bits = attribute.first == kAttrScopeAny ? ICIMQualifierDecl::kScopeAny : 0;
        for (const TBitAttribute& scope : kScopeAttributes) {
            bits |= attribute.first == scope.m_name ? scope.m_bits : 0;
        }
        if (bits != 0 && ScopeApplies(parser, attribute)) {
            m_declaration->m_scope |= bits;
        }
    }
}

} // namespace NQRN20
