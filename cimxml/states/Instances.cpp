// The states of instances and their property values.
#include "cimxml/states/Instances.h"

#include "cimxml/Names.h"
#include "cimxml/states/InstanceNames.h"
#include "cimxml/states/Support.h"
#include "cimxml/states/Values.h"

namespace NQRN20 {

using namespace NCimXml;

namespace {

// Instances of this class switch the core library to the parser's conventions.
const char kParserSwitchClass[] = "ZKV_ComputerSystem";
const char kTypeMismatch[] = "Property type != property declaration type";
const char kCouldntStore[] = "Couldn't store property ";

// A value the instance refuses (a property its class lacks, a value of another type) is
// reported rather than lost without a word.
void StoreValue(TCIMXMLParser& parser, const TPropertyValue& property) {
    try {
        property.m_instance->SetPropertyValue(property.m_name, property.m_value, TCIMOptions());
        if (property.m_embeddedObject != kEmbeddedNone) {
            property.m_instance->SetPropertyEmbeddedObject(
                property.m_name, property.m_embeddedObject, TCIMOptions());
        }
    } catch (const TQRNException& error) {
        parser.FatalError(kCouldntStore + property.m_name + ": " + error.what());
    }
}

} // namespace

// INSTANCE: QUALIFIER*, (PROPERTY | PROPERTY.ARRAY | PROPERTY.REFERENCE)*
void TCIMXMLParser::TStateInstance::ProcessAttributes(TCIMXMLParser& parser,
                                                      TAttributeMap& attributes) {
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        parser.HandleClassName(it, &m_className);
    }
    if (m_className == kParserSwitchClass) {
        TOSSpecific::setQRNParser(true);
    }
    // No namespace, and no name, find no class either.
    const boost::shared_ptr<ICIMClass> cimClass = LookUpOrLog(kCouldntFindClass, m_className, [&] {
        const boost::shared_ptr<ICIMNamespace> cimNamespace = parser.LockNamespace();
        boost::shared_ptr<ICIMClass> found;
        if (cimNamespace) {
            found = cimNamespace->GetClass(m_className, TCIMOptions());
        }
        if (!found) {
            throw TQRNException(kQRNStatusNotFound);
        }
        return found;
    });
    *m_slot = cimClass->CreateInstance(TCIMOptions());
}

// The properties of an instance that was not created are skipped: its failure was reported.
void TCIMXMLParser::TStateInstance::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                 TAttributeMap& attributes) {
    if (m_phase == 0 && name == kQualifier) {
        parser.PushState(new (parser) TStateSkip(), attributes);
        return;
    }
    if (m_phase != 0 && m_phase != 1) {
        parser.ReportStateCorrupt();
    }
    m_phase = 1;
    const bool isProperty =
        name == kProperty || name == kPropertyArray || name == kPropertyReference;
    if (!isProperty) {
        parser.RejectElement(name);
    }
    const boost::shared_ptr<ICIMInstance>& instance = *m_slot;
    if (!instance) {
        parser.PushState(new (parser) TStateSkip(), attributes);
    } else if (name == kProperty) {
        parser.PushState(new (parser) TStateProperty(instance), attributes);
    } else if (name == kPropertyArray) {
        parser.PushState(new (parser) TStatePropertyArray(instance), attributes);
    } else {
        parser.PushState(new (parser) TStatePropertyReference(instance), attributes);
    }
}

// PROPERTY: (QUALIFIER | VALUE)*
TCIMValue::TCIMType TCIMXMLParser::TStateProperty::DeclaredType() {
    if (!m_declaredTypeKnown) {
        m_declaredType = m_property.m_instance->GetProperty(m_property.m_name, TCIMOptions())
                             ->GetType(TCIMOptions());
        m_declaredTypeKnown = true;
    }
    return m_declaredType;
}

void TCIMXMLParser::TStateProperty::ProcessAttributes(TCIMXMLParser& parser,
                                                      TAttributeMap& attributes) {
    TCIMValue::TCIMType type;
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        parser.HandleCIMName(it, &m_property.m_name) || parser.HandleCIMType(it, &type) ||
            parser.HandleClassOrigin(it, &m_property.m_classOrigin) ||
            parser.HandlePropagated(it, m_property.m_propagated) ||
            parser.HandleEmbeddedObject(it, &m_property.m_embeddedObject);
    }
    if (!parser.m_qx518Mode) {
        CheckDeclaredType(parser, type);
    }
}

// A property the class lacks is logged here and reported again when its value is stored.
void TCIMXMLParser::TStateProperty::CheckDeclaredType(TCIMXMLParser& parser,
                                                      TCIMValue::TCIMType type) {
    TCIMValue::TCIMType declared;
    try {
        declared =
            LookUpOrLog(kCouldntFindProperty, m_property.m_name, [&] { return DeclaredType(); });
    } catch (const TQRNException& error) {
        if (error.GetStatus() != kQRNStatusNotFound) {
            throw;
        }
        return;
    }
    if (ECIMType(declared) != ECIMType(type)) {
        parser.FatalError(kTypeMismatch);
    }
}

// Any other child means the property is over: it is stored, and the child goes to the
// INSTANCE state, which is on top again; status 36 tells the tokenizer so.
void TCIMXMLParser::TStateProperty::StartElement(TCIMXMLParser& parser, const std::string& name,
                                                 TAttributeMap& attributes) {
    if (m_phase != 0 && m_phase != 1) {
        parser.ReportStateCorrupt();
    }
    if (name == kQualifier) {
        parser.PushState(new (parser) TStateSkip(), attributes);
        return;
    }
    if (name == kValue) {
        TCIMValue::TCIMType type;
        try {
            type = DeclaredType();
        } catch (...) {
            throw TQRNException(kQRNStatusInvalidProperty);
        }
        m_property.m_valueSeen = true;
        parser.PushState(new (parser) TStateValue(parser, &m_property.m_value, type), attributes);
        return;
    }
    try {
        EndElement(parser, name);
    } catch (const TQRNException&) {
        // As at an end tag: a property that could not be stored is popped all the same.
        parser.PopState();
    }
    if (!parser.m_stateStack.empty()) {
        const boost::shared_ptr<TParseState> top = parser.m_stateStack.back();
        top->StartElement(parser, name, attributes);
    }
    throw TQRNException(kQRNStatusInvalidFormat);
}

// In QX518 mode a value of another type than the declared one is dropped quietly; otherwise
// the type was checked at the start.
void TCIMXMLParser::TStateProperty::EndElement(TCIMXMLParser& parser, const std::string&) {
    TPropertyValue& property = m_property;
    if (!property.m_valueSeen) {
        property.m_value = TCIMValue(DeclaredType(), 0);
    }
    if (!parser.m_qx518Mode || ECIMType(property.m_value.GetType()) == ECIMType(DeclaredType())) {
        StoreValue(parser, property);
    }
    parser.PopState();
}

// PROPERTY.ARRAY: (QUALIFIER | VALUE.ARRAY)*
void TCIMXMLParser::TStatePropertyArray::ProcessAttributes(TCIMXMLParser& parser,
                                                           TAttributeMap& attributes) {
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        parser.HandleCIMName(it, &m_property.m_name) || parser.HandleCIMType(it, &m_type) ||
            parser.HandleArraySize(it, m_arraySize) ||
            parser.HandleClassOrigin(it, &m_property.m_classOrigin) ||
            parser.HandlePropagated(it, m_property.m_propagated) ||
            parser.HandleEmbeddedObject(it, &m_property.m_embeddedObject);
    }
}

void TCIMXMLParser::TStatePropertyArray::StartElement(TCIMXMLParser& parser,
                                                      const std::string& name,
                                                      TAttributeMap& attributes) {
    if (name == kQualifier) {
        parser.PushState(new (parser) TStateSkip(), attributes);
    } else if (name == kValueArray) {
        m_property.m_valueSeen = true;
        parser.PushState(new (parser) TStateValueArray(&m_property.m_value, m_type, m_arraySize),
                         attributes);
    } else {
        parser.RejectElement(name);
    }
}

void TCIMXMLParser::TStatePropertyArray::EndElement(TCIMXMLParser& parser, const std::string&) {
    if (!m_property.m_valueSeen) {
        m_property.m_value = TCIMValue(ECIMType(m_type | kCIMTypeArray), m_arraySize);
    }
    StoreValue(parser, m_property);
    parser.PopState();
}

// PROPERTY.REFERENCE: (QUALIFIER | VALUE.REFERENCE)*
// Asks the class for the property only to report early that it does not declare it.
void TCIMXMLParser::TStatePropertyReference::ProcessAttributes(TCIMXMLParser& parser,
                                                               TAttributeMap& attributes) {
    for (auto it = attributes.begin(); it != attributes.end(); ++it) {
        parser.HandleCIMName(it, &m_property.m_name) ||
            parser.HandleReferenceClass(it, &m_referenceClass) ||
            parser.HandleClassOrigin(it, &m_property.m_classOrigin) ||
            parser.HandlePropagated(it, m_property.m_propagated);
    }
    m_property.m_instance->GetClass(TCIMOptions())
        ->GetPropertyDecl(m_property.m_name, TCIMOptions());
}

void TCIMXMLParser::TStatePropertyReference::StartElement(TCIMXMLParser& parser,
                                                          const std::string& name,
                                                          TAttributeMap& attributes) {
    if (name == kQualifier) {
        parser.PushState(new (parser) TStateSkip(), attributes);
    } else if (name == kValueReference) {
        m_property.m_valueSeen = true;
        parser.PushState(new (parser) TStateValueReference(&m_property.m_value), attributes);
    } else {
        parser.RejectElement(name);
    }
}

void TCIMXMLParser::TStatePropertyReference::EndElement(TCIMXMLParser& parser, const std::string&) {
    if (!m_property.m_valueSeen) {
        m_property.m_value = TCIMValue(kCIMTypeReference, 0);
        const boost::shared_ptr<ICIMNamespace> cimNamespace = parser.LockNamespace();
        if (cimNamespace) {
            m_property.m_value.SetReferencedClass(GetClassOrLog(cimNamespace, m_referenceClass));
        }
    }
    StoreValue(parser, m_property);
    parser.PopState();
}

} // namespace NQRN20
