// Summarises what a parse left behind: what it collected and what the namespace holds.
#pragma once

#include "support/ParseDocument.h"

#include <string>
#include <vector>

namespace NQRN20 {

template <class TObject>
std::string JoinNames(const std::vector<boost::shared_ptr<TObject>>& objects) {
    std::string names;
    for (const auto& object : objects) {
        names += (names.empty() ? "" : " ") + object->GetName(TCIMOptions());
    }
    return names.empty() ? "-" : names;
}

// "collected A B, committed A B C; instances collected 1 of 2" ("-" for no classes), from the
// parse's result and the namespace it filled.
inline std::string Outcome(const boost::shared_ptr<ICIMNamespace>& cimNamespace,
                           const TParseResult& parsed) {
    std::vector<boost::shared_ptr<ICIMClass>> classes;
    cimNamespace->EnumClasses(TAddToVectorCallback<ICIMClass>(classes), TCIMOptions());
    std::vector<boost::shared_ptr<ICIMInstance>> instances;
    cimNamespace->EnumInstances("", TAddToVectorCallback<ICIMInstance>(instances), TCIMOptions());
    return "collected " + JoinNames(parsed.m_classes) + ", committed " + JoinNames(classes) +
           "; instances collected " + std::to_string(parsed.m_instances.size()) + " of " +
           std::to_string(instances.size());
}

} // namespace NQRN20
