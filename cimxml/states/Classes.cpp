// The states of classes and their property declarations.
#include "cimxml/states/Classes.h"

#include "cimxml/Names.h"
#include "cimxml/states/InstanceNames.h"
#include "cimxml/states/Methods.h"
#include "cimxml/states/Qualifiers.h"
#include "cimxml/states/Support.h"
#include "cimxml/states/Values.h"

namespace NQRN20 {

using namespace NCimXml;

namespace {

enum EClassPhase { kPhaseQualifiers = 0, kPhaseProperties = 1, kPhaseMethods = 2 };

const char kCouldntDeclareProperty[] = "Couldn't declare property ";

// Reads the attributes every declaration kind has, and offers the others to handleOwn. The
// declaration is created without a type: the typed default given at the end brings it.
template <class THandleOwn>
void DeclareProperty(TCIMXMLParser& parser, TPropertyDeclFields& fields, TAttributeMap& attributes,
                     THandleOwn handleOwn) {
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        parser.HandleCIMName(it, &fields.m_name) || handleOwn(it) ||
            parser.HandleClassOrigin(it, &fields.m_classOrigin) ||
            parser.HandlePropagated(it, fields.m_propagated);
    }
    const boost::shared_ptr<ICIMClass> cimClass = fields.m_class.lock();
    if (cimClass) {
        fields.m_declaration =
            cimClass->CreatePropertyDecl(fields.m_name, TCIMValue(), TCIMOptions());
        if (fields.m_embeddedObject != kEmbeddedNone) {
            fields.m_declaration->SetEmbeddedObject(fields.m_embeddedObject, TCIMOptions());
        }
    }
}

// (QUALIFIER | valueElement)*, the last value standing.
template <class TMakeValueState>
void StartPropertyDeclChild(TCIMXMLParser& parser, TPropertyDeclFields& fields,
                            const std::string& name, TAttributeMap& attributes,
                            const char* valueElement, TMakeValueState makeValueState) {
    if (name == kQualifier) {
        parser.PushState(new (parser) TCIMXMLParser::TStateQualifier(fields.m_declaration),
                         attributes);
    } else if (name == valueElement) {
        fields.m_valueSeen = true;
        parser.PushState(makeValueState(), attributes);
    } else {
        parser.RejectElement(name);
    }
}

// A declaration the core refused is reported here; one of a class that was not created is
// not, since the class's parent reports the class. Otherwise the default, or the null value
// makeDefault builds, is set and the declaration committed. A commit the core refuses (a type
// other than the inherited property's) is reported too, lest the declaration vanish unseen.
template <class TMakeDefault>
void EndPropertyDecl(TCIMXMLParser& parser, TPropertyDeclFields& fields, TMakeDefault makeDefault) {
    if (fields.m_declaration) {
        if (!fields.m_valueSeen) {
            fields.m_value = makeDefault();
        }
        fields.m_declaration->SetValue(fields.m_value, TCIMOptions());
        try {
            CommitAllowingDuplicate(fields.m_declaration);
        } catch (const TQRNException& error) {
            parser.FatalError(kCouldntDeclareProperty + fields.m_name + ": " + error.what());
        }
    } else if (!fields.m_class.expired()) {
        parser.FatalError(kCouldntDeclareProperty + fields.m_name);
    }
    parser.PopState();
}

} // namespace

// CLASS: QUALIFIER*, (PROPERTY | PROPERTY.ARRAY | PROPERTY.REFERENCE)*, METHOD*
// The class is created at once, so that its children can add to it; the parent commits it.
// Without a superclass the lookup is of the empty name, which finds nothing and throws nothing.
void TCIMXMLParser::TStateClass::ProcessAttributes(TCIMXMLParser& parser,
                                                   TAttributeMap& attributes) {
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        parser.HandleCIMName(it, &m_className) || parser.HandleSuperClass(it, &m_superClassName);
    }
    // A namespace that is gone takes no class; the parent reports the class missing.
    const boost::shared_ptr<ICIMNamespace> cimNamespace = parser.LockNamespace();
    if (!cimNamespace) {
        return;
    }
    const boost::shared_ptr<ICIMClass> superClass = GetClassOrLog(cimNamespace, m_superClassName);
    m_class = cimNamespace->CreateClass(m_className, superClass, TCIMOptions());
    *m_slot = m_class;
}

// Each phase passes a child it does not take on to the next, so the phase has advanced when a
// child is finally rejected. A class that was not created still hands its empty handle on: its
// children cope with it.
void TCIMXMLParser::TStateClass::StartElement(TCIMXMLParser& parser, const std::string& name,
                                              TAttributeMap& attributes) {
    switch (m_phase) {
    case kPhaseQualifiers:
        if (name == kQualifier) {
            parser.PushState(new (parser) TStateQualifier(m_class), attributes);
            return;
        }
        m_phase = kPhaseProperties;
        [[fallthrough]];
    case kPhaseProperties:
        if (name == kProperty) {
            parser.PushState(new (parser) TStatePropertyDecl(m_class), attributes);
            return;
        }
        if (name == kPropertyArray) {
            parser.PushState(new (parser) TStatePropertyArrayDecl(m_class), attributes);
            return;
        }
        if (name == kPropertyReference) {
            parser.PushState(new (parser) TStatePropertyReferenceDecl(m_class), attributes);
            return;
        }
        m_phase = kPhaseMethods;
        [[fallthrough]];
    case kPhaseMethods:
        if (name != kMethod) {
            parser.RejectElement(name);
        }
        parser.PushState(new (parser) TStateMethod(m_class), attributes);
        return;
    default:
        parser.ReportStateCorrupt();
    }
}

// PROPERTY: (QUALIFIER | VALUE)*
void TCIMXMLParser::TStatePropertyDecl::ProcessAttributes(TCIMXMLParser& parser,
                                                          TAttributeMap& attributes) {
    DeclareProperty(parser, m_fields, attributes, [&](TAttributeMap::iterator& it) {
        return parser.HandleCIMType(it, &m_fields.m_type) ||
               parser.HandleEmbeddedObject(it, &m_fields.m_embeddedObject);
    });
}

void TCIMXMLParser::TStatePropertyDecl::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                     TAttributeMap& attributes) {
    StartPropertyDeclChild(parser, m_fields, name, attributes, kValue, [&] {
        return new (parser) TStateValue(parser, &m_fields.m_value, m_fields.m_type);
    });
}

void TCIMXMLParser::TStatePropertyDecl::EndElement(TCIMXMLParser& parser, const std::string&) {
    EndPropertyDecl(parser, m_fields, [&] { return TCIMValue(m_fields.m_type, 0); });
}

// PROPERTY.ARRAY: (QUALIFIER | VALUE.ARRAY)*
void TCIMXMLParser::TStatePropertyArrayDecl::ProcessAttributes(TCIMXMLParser& parser,
                                                               TAttributeMap& attributes) {
    DeclareProperty(parser, m_fields, attributes, [&](TAttributeMap::iterator& it) {
        return parser.HandleCIMType(it, &m_fields.m_type) ||
               parser.HandleArraySize(it, m_arraySize) ||
               parser.HandleEmbeddedObject(it, &m_fields.m_embeddedObject);
    });
}

void TCIMXMLParser::TStatePropertyArrayDecl::StartElement(TCIMXMLParser& parser,
                                                          const std::string& name,
                                                          TAttributeMap& attributes) {
    StartPropertyDeclChild(parser, m_fields, name, attributes, kValueArray, [&] {
        return new (parser) TStateValueArray(&m_fields.m_value, m_fields.m_type, m_arraySize);
    });
}

// The TYPE attribute names the element type; the null default is of the array type.
void TCIMXMLParser::TStatePropertyArrayDecl::EndElement(TCIMXMLParser& parser, const std::string&) {
    EndPropertyDecl(parser, m_fields,
                    [&] { return TCIMValue(m_fields.m_type.GetArrayType(), m_arraySize); });
}

// PROPERTY.REFERENCE: (QUALIFIER | VALUE.REFERENCE)*
void TCIMXMLParser::TStatePropertyReferenceDecl::ProcessAttributes(TCIMXMLParser& parser,
                                                                   TAttributeMap& attributes) {
    DeclareProperty(parser, m_fields, attributes, [&](TAttributeMap::iterator& it) {
        return parser.HandleReferenceClass(it, &m_referenceClass);
    });
}

void TCIMXMLParser::TStatePropertyReferenceDecl::StartElement(TCIMXMLParser& parser,
                                                              const std::string& name,
                                                              TAttributeMap& attributes) {
    StartPropertyDeclChild(parser, m_fields, name, attributes, kValueReference,
                           [&] { return new (parser) TStateValueReference(&m_fields.m_value); });
}

// The class a reference may point to is kept with a default as with none. A null default needs
// it: a class the namespace does not hold throws, and the declaration is then left out. A set
// default stands without it, after the log line.
void TCIMXMLParser::TStatePropertyReferenceDecl::EndElement(TCIMXMLParser& parser,
                                                            const std::string&) {
    const boost::shared_ptr<ICIMNamespace> cimNamespace = parser.LockNamespace();
    TCIMValue& value = m_fields.m_value;
    if (m_fields.m_valueSeen && cimNamespace && !m_referenceClass.empty() &&
        value.GetType() == kCIMTypeReference) {
        try {
            value.SetReferencedClass(
                GetReferencedClassOrLog(cimNamespace, m_referenceClass, m_fields.m_class.lock()));
        } catch (const TQRNException& error) {
            if (error.GetStatus() != kQRNStatusNotFound) {
                throw;
            }
        }
    }
    EndPropertyDecl(parser, m_fields, [&] {
        TCIMValue null(kCIMTypeReference, 0);
        if (cimNamespace) {
            null.SetReferencedClass(
                GetReferencedClassOrLog(cimNamespace, m_referenceClass, m_fields.m_class.lock()));
        }
        return null;
    });
}

} // namespace NQRN20
