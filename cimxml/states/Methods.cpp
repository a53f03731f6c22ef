// The states of method declarations and their four kinds of parameter.
#include "cimxml/states/Methods.h"

#include "cimxml/Names.h"
#include "cimxml/states/Qualifiers.h"
#include "cimxml/states/Support.h"
#include "cimxml/states/Values.h"

namespace NQRN20 {

using namespace NCimXml;

namespace {

const char kCouldntDeclareMethod[] = "Couldn't declare method ";
const char kCouldntDeclareParameter[] = "Couldn't declare parameter ";

// The four parameter elements differ only in the attributes they read, whether they are
// references, and whether a single VALUE may give their default.
enum EParameterKind { kScalarParameter, kReferenceParameter, kArrayParameter, kRefArrayParameter };

bool IsReference(EParameterKind kind) {
    return kind == kReferenceParameter || kind == kRefArrayParameter;
}

bool IsArray(EParameterKind kind) {
    return kind == kArrayParameter || kind == kRefArrayParameter;
}

void ReadParameterAttributes(TCIMXMLParser& parser, TParameterFields& fields, EParameterKind kind,
                             TAttributeMap& attributes) {
    const bool reference = IsReference(kind);
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        parser.HandleCIMName(it, &fields.m_name) ||
            (!reference && (parser.HandleCIMType(it, &fields.m_type) ||
                            parser.HandleEmbeddedObject(it, &fields.m_embeddedObject))) ||
            (reference && parser.HandleReferenceClass(it, &fields.m_referenceClass)) ||
            (kind == kArrayParameter && parser.HandleArraySize(it, fields.m_arraySize)) ||
            (kind != kScalarParameter && (parser.HandleClassOrigin(it, &fields.m_classOrigin) ||
                                          parser.HandlePropagated(it, fields.m_propagated)));
    }
}

// The core is told the element type of an array and only that a reference is one; the shape
// the element gives beyond that follows, so that the model can show the parameter as declared.
void DeclareParameter(TCIMXMLParser& parser, TParameterFields& fields, EParameterKind kind,
                      TAttributeMap& attributes) {
    ReadParameterAttributes(parser, fields, kind, attributes);
    if (fields.m_method) {
        const TCIMValue::TCIMType type =
            IsReference(kind) ? TCIMValue::TCIMType(kCIMTypeReference) : fields.m_type;
        fields.m_parameter =
            fields.m_method->CreateParameterDecl(fields.m_name, type, TCIMOptions());
        fields.m_parameter->SetShape(IsArray(kind), fields.m_arraySize, fields.m_referenceClass,
                                     TCIMOptions());
        if (fields.m_embeddedObject != kEmbeddedNone) {
            fields.m_parameter->SetEmbeddedObject(fields.m_embeddedObject, TCIMOptions());
        }
    }
}

// PARAMETER, PARAMETER.ARRAY: (QUALIFIER | VALUE | VALUE.ARRAY)*
// PARAMETER.REFERENCE, PARAMETER.REFARRAY: (QUALIFIER | VALUE.ARRAY)*
void StartParameterChild(TCIMXMLParser& parser, TParameterFields& fields, EParameterKind kind,
                         const std::string& name, TAttributeMap& attributes) {
    if (name == kQualifier) {
        parser.PushState(new (parser) TCIMXMLParser::TStateQualifier(fields.m_parameter),
                         attributes);
    } else if (name == kValue && !IsReference(kind)) {
        fields.m_valueSeen = true;
        parser.PushState(new (parser)
                             TCIMXMLParser::TStateValue(parser, &fields.m_value, fields.m_type),
                         attributes);
    } else if (name == kValueArray) {
        fields.m_valueSeen = true;
        parser.PushState(new (parser)
                             TCIMXMLParser::TStateValueArray(&fields.m_value, fields.m_type, 0),
                         attributes);
    } else {
        parser.RejectElement(name);
    }
}

// A parameter the core refused is reported here; one of a method that was not declared is not,
// since that is reported already. A reference without a default must name a class the
// namespace holds; the lookup throws for one it does not, and the parameter is then left out.
void EndParameter(TCIMXMLParser& parser, TParameterFields& fields, EParameterKind kind) {
    if (fields.m_parameter) {
        const boost::shared_ptr<ICIMNamespace> cimNamespace = parser.LockNamespace();
        if (IsReference(kind) && !fields.m_valueSeen && cimNamespace) {
            GetReferencedClassOrLog(cimNamespace, fields.m_referenceClass, fields.m_class.lock());
        }
        CommitAllowingDuplicate(fields.m_parameter);
    } else if (fields.m_method) {
        parser.FatalError(kCouldntDeclareParameter + fields.m_name);
    }
    parser.PopState();
}

} // namespace

// METHOD: (QUALIFIER | PARAMETER | PARAMETER.REFERENCE | PARAMETER.ARRAY | PARAMETER.REFARRAY)*
void TCIMXMLParser::TStateMethod::ProcessAttributes(TCIMXMLParser& parser,
                                                    TAttributeMap& attributes) {
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        parser.HandleCIMName(it, &m_name) || parser.HandleCIMType(it, &m_returnType);
    }
    const boost::shared_ptr<ICIMClass> cimClass = m_class.lock();
    if (cimClass) {
        m_method = cimClass->CreateMethodDecl(m_name, m_returnType, TCIMOptions());
    }
}

void TCIMXMLParser::TStateMethod::StartElement(TCIMXMLParser& parser, const std::string& name,
                                               TAttributeMap& attributes) {
    if (name == kParameter) {
        parser.PushState(new (parser) TStateParameter(m_method, m_class), attributes);
    } else if (name == kParameterReference) {
        parser.PushState(new (parser) TStateParameterReference(m_method, m_class), attributes);
    } else if (name == kParameterArray) {
        parser.PushState(new (parser) TStateParameterArray(m_method, m_class), attributes);
    } else if (name == kQualifier) {
        parser.PushState(new (parser) TStateQualifier(m_method), attributes);
    } else if (name == kParameterRefArray) {
        parser.PushState(new (parser) TStateParameterRefArray(m_method, m_class), attributes);
    } else {
        parser.ReportStateCorrupt();
    }
}

// A method the core refused is reported here; one of a class that was not created is not,
// since the class's parent reports the class.
void TCIMXMLParser::TStateMethod::EndElement(TCIMXMLParser& parser, const std::string&) {
    if (m_method) {
        CommitAllowingDuplicate(m_method);
    } else if (!m_class.expired()) {
        parser.FatalError(kCouldntDeclareMethod + m_name);
    }
    parser.PopState();
}

// PARAMETER: (QUALIFIER | VALUE | VALUE.ARRAY)*
void TCIMXMLParser::TStateParameter::ProcessAttributes(TCIMXMLParser& parser,
                                                       TAttributeMap& attributes) {
    DeclareParameter(parser, m_fields, kScalarParameter, attributes);
}

void TCIMXMLParser::TStateParameter::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                  TAttributeMap& attributes) {
    StartParameterChild(parser, m_fields, kScalarParameter, name, attributes);
}

void TCIMXMLParser::TStateParameter::EndElement(TCIMXMLParser& parser, const std::string&) {
    EndParameter(parser, m_fields, kScalarParameter);
}

// PARAMETER.REFERENCE: (QUALIFIER | VALUE.ARRAY)*
void TCIMXMLParser::TStateParameterReference::ProcessAttributes(TCIMXMLParser& parser,
                                                                TAttributeMap& attributes) {
    DeclareParameter(parser, m_fields, kReferenceParameter, attributes);
}

void TCIMXMLParser::TStateParameterReference::StartElement(TCIMXMLParser& parser,
                                                           const std::string& name,
                                                           TAttributeMap& attributes) {
    StartParameterChild(parser, m_fields, kReferenceParameter, name, attributes);
}

void TCIMXMLParser::TStateParameterReference::EndElement(TCIMXMLParser& parser,
                                                         const std::string&) {
    EndParameter(parser, m_fields, kReferenceParameter);
}

// PARAMETER.ARRAY: (QUALIFIER | VALUE | VALUE.ARRAY)*
void TCIMXMLParser::TStateParameterArray::ProcessAttributes(TCIMXMLParser& parser,
                                                            TAttributeMap& attributes) {
    DeclareParameter(parser, m_fields, kArrayParameter, attributes);
}

void TCIMXMLParser::TStateParameterArray::StartElement(TCIMXMLParser& parser,
                                                       const std::string& name,
                                                       TAttributeMap& attributes) {
    StartParameterChild(parser, m_fields, kArrayParameter, name, attributes);
}

void TCIMXMLParser::TStateParameterArray::EndElement(TCIMXMLParser& parser, const std::string&) {
    EndParameter(parser, m_fields, kArrayParameter);
}

// PARAMETER.REFARRAY: (QUALIFIER | VALUE.ARRAY)*
void TCIMXMLParser::TStateParameterRefArray::ProcessAttributes(TCIMXMLParser& parser,
                                                               TAttributeMap& attributes) {
    DeclareParameter(parser, m_fields, kRefArrayParameter, attributes);
}

void TCIMXMLParser::TStateParameterRefArray::StartElement(TCIMXMLParser& parser,
                                                          const std::string& name,
                                                          TAttributeMap& attributes) {
    StartParameterChild(parser, m_fields, kRefArrayParameter, name, attributes);
}

void TCIMXMLParser::TStateParameterRefArray::EndElement(TCIMXMLParser& parser, const std::string&) {
    EndParameter(parser, m_fields, kRefArrayParameter);
}

} // namespace NQRN20
