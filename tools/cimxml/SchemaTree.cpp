// The class hierarchy, walked with a stack of its own.
#include "tools/cimxml/SchemaTree.h"

#include "core/Text.h"
#include "tools/cimxml/Json.h"
#include "tools/cimxml/SchemaView.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

namespace NQRN20 {
namespace NSchemaTree {

namespace {

struct TNode {
    std::string m_name;
    std::vector<const TNode*> m_children;
};

struct TLevel {
    const std::vector<const TNode*>* m_nodes;
    size_t m_next;
};

bool ByName(const TNode* a, const TNode* b) {
    return LowerAscii(a->m_name) < LowerAscii(b->m_name);
}

// One line a node in text; in JSON, a member a node whose children open an object.
void WriteNodes(const std::vector<const TNode*>& top, EFormat format, std::ostream& out) {
    std::vector<TLevel> stack{{&top, 0}};
    if (format == kJson) {
        out << "{";
    }
    while (!stack.empty()) {
        TLevel& level = stack.back();
        const size_t depth = stack.size();
        if (level.m_next == level.m_nodes->size()) {
            stack.pop_back();
            if (format == kJson) {
                out << (level.m_nodes->empty() ? "" : "\n" + std::string(2 * (depth - 1), ' '))
                    << "}";
            }
            continue;
        }
        const TNode* node = (*level.m_nodes)[level.m_next++];
        if (format == kText) {
            out << std::string(2 * (depth - 1), ' ') << node->m_name << "\n";
        } else {
            out << (level.m_next > 1 ? ",\n" : "\n") << std::string(2 * depth, ' ')
                << JsonQuote(node->m_name) << ": {";
        }
        stack.push_back({&node->m_children, 0});
    }
    if (format == kJson) {
        out << "\n";
    }
}

} // namespace

bool Write(ICIMNamespace& cimNamespace, const std::string& root, EFormat format,
           std::ostream& out) {
    const NSchemaView::TClasses classes = NSchemaView::Classes(cimNamespace);
    std::vector<TNode> nodes(classes.size());
    std::unordered_map<std::string, TNode*> byName;
    for (size_t i = 0; i < classes.size(); ++i) {
        nodes[i].m_name = classes[i]->GetName(TCIMOptions());
        byName[LowerAscii(nodes[i].m_name)] = &nodes[i];
    }
    std::vector<const TNode*> top;
    for (size_t i = 0; i < classes.size(); ++i) {
        const boost::shared_ptr<ICIMClass> superClass = classes[i]->GetSuperClass(TCIMOptions());
        const auto parent =
            superClass ? byName.find(LowerAscii(superClass->GetName(TCIMOptions()))) : byName.end();
        (parent != byName.end() ? parent->second->m_children : top).push_back(&nodes[i]);
    }
    for (TNode& node : nodes) {
        std::sort(node.m_children.begin(), node.m_children.end(), ByName);
    }
    std::sort(top.begin(), top.end(), ByName);
    if (!root.empty()) {
        const auto found = byName.find(LowerAscii(root));
        if (found == byName.end()) {
            return false;
        }
        top = {found->second};
    }
    WriteNodes(top, format, out);
    return true;
}

} // namespace NSchemaTree
} // namespace NQRN20
