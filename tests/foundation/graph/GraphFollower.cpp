// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "foundation/graph/GraphFollower.h"

#include <algorithm>

namespace qxtest {

namespace {

std::wstring nameOf(const wchar_t* name) {
    return name != nullptr ? name : L"";
}

/// What a list holds, without edges of graphs that nobody hears of.
std::vector<const QxObject*> heardIn(const QxDList& list) {
    std::vector<const QxObject*> objects;
    for (const QxGraphObject* object : objectsOf<QxGraphObject>(list)) {
        if (object->pFactory() != nullptr) {
            objects.push_back(object);
        }
    }
    return objects;
}

const std::pair<int, const QxEdgeDList* (QxNode::*)() const> ListsAtNode[] = {
    {QxListOfInEdges, &QxNode::pInEdgeList},
    {QxListOfOutEdges, &QxNode::pOutEdgeList},
    {QxListOfDisconnectedEdges, &QxNode::pDisconnectedEdgeList},
    {QxListOfDeactivatedEdges, &QxNode::pDeactivatedEdgeList}};

}  // namespace

void GraphFollower::graphChanged(QxGraphChangeEventData* data) {
    const QxObject* source = data->pSource();
    if (data->type() == ChildGraphChanged) {
        m_children[source] = data->pNewChildGraph();
    } else if (data->type() == NameChanged) {
        m_names[source] = nameOf(data->pNewNameString());
    } else if (data->type() == GraphOrderChanged) {
        at(source, data->changedList()) = heardIn(*data->pOrder());
    } else if (data->pSourceGraph() != nullptr) {
        hearOfGraph(*data);
    } else if (data->pSourceNode() != nullptr) {
        hearOfNode(*data);
    } else {
        hearOfEdge(*data);
    }
}

void GraphFollower::place(Objects& list, const QxObject* object, const QxObject* previous) {
    const auto behind = std::find(list.begin(), list.end(), previous);
    list.insert(previous == nullptr    ? list.begin()
                : behind == list.end() ? behind
                                       : behind + 1,
                object);
}

void GraphFollower::lookAtMember(const QxGraphMember& member) {
    m_children[&member] = member.pChildGraph();
    m_names[&member] = nameOf(member.pNameString());
}

void GraphFollower::look(const QxNode& node) {
    lookAtMember(node);
    for (const auto& [list, edges] : ListsAtNode) {
        at(&node, list) = heardIn(*(node.*edges)());
    }
}

void GraphFollower::look(const QxGraph& graph) {
    m_graphs.insert(&graph);
    m_names[&graph] = nameOf(graph.pNameString());
    at(&graph, Contents) = heardIn(*graph.pNodeList());
    int state = QxEdgeIsDisconnected;
    for (const QxEdgeDList* list :
         {graph.pDisconnectedEdgeList(), graph.pEdgeList(), graph.pDeactivatedEdgeList()}) {
        at(&graph, EdgesByState + state) = heardIn(*list);
        for (const QxEdge* edge : edgesOf(list)) {
            lookAtMember(*edge);
            m_edges[edge] = {&graph, edge->pSourceNode(), edge->pTargetNode(),
                             static_cast<QxEdgeStateEnum>(state)};
            for (const QxNode* end : {edge->pSourceNode(), edge->pTargetNode()}) {
                end != nullptr ? look(*end) : void();
            }
        }
        ++state;
    }
    for (const QxNode* node : objectsOf<QxNode>(*graph.pNodeList())) {
        look(*node);
    }
}

void GraphFollower::forget(const QxGraph& graph) {
    m_graphs.erase(&graph);
    for (auto edge = m_edges.begin(); edge != m_edges.end();) {
        if (edge->second.owner == &graph) {
            leaveEnds(static_cast<const QxEdge*>(edge->first));
            edge = m_edges.erase(edge);
        } else {
            ++edge;
        }
    }
}

void GraphFollower::leaveEnds(const QxEdge* edge) {
    for (const QxNode* end : {m_edges.at(edge).source, m_edges.at(edge).target}) {
        for (const auto& [list, edges] : ListsAtNode) {
            std::erase(at(end, list), edge);
        }
    }
}

void GraphFollower::enterEnds(const QxEdge* edge) {
    const Edge& known = m_edges.at(edge);
    const bool connected = known.state == QxEdgeIsConnected;
    const int idle =
        known.state == QxEdgeIsDeactivated ? QxListOfDeactivatedEdges : QxListOfDisconnectedEdges;
    at(known.source, connected ? int{QxListOfOutEdges} : idle).push_back(edge);
    at(known.target, connected ? int{QxListOfInEdges} : idle).push_back(edge);
}

void GraphFollower::hearOfGraph(const QxGraphChangeEventData& data) {
    const QxGraph* graph = data.pSourceGraph();
    std::erase(at(data.pOldOwnerManager(), Contents), graph);
    m_misfit = m_misfit.empty() && data.type() == GraphInserted &&
                       data.pOldOwnerManager() == data.pNewOwnerManager()
                   ? "a graph came from where it went"
                   : m_misfit;
    if (data.type() != GraphInserted) {
        forget(*graph);
        return;
    }
    if (graph->isIntergraph() == 0) {
        place(at(data.pNewOwnerManager(), Contents), graph, data.pNewPrevious());
    }
    if (data.pOldOwnerManager() == nullptr) {
        look(*graph);
    }
}

void GraphFollower::hearOfNode(const QxGraphChangeEventData& data) {
    const QxNode* node = data.pSourceNode();
    std::erase(at(data.pOldOwnerGraph(), Contents), node);
    if (data.type() == NodeInserted) {
        place(at(data.pNewOwnerGraph(), Contents), node, data.pNewPrevious());
        if (m_graphs.count(data.pOldOwnerGraph()) == 0) {
            look(*node);
        }
    }
}

void GraphFollower::hearOfEdgeInserted(const QxGraphChangeEventData& data) {
    const QxEdge* edge = data.pSourceEdge();
    std::erase(at(data.pOldOwnerGraph(), EdgesByState + data.oldEdgeState()), edge);
    m_edges[edge] = {data.pNewOwnerGraph(), data.pNewSourceNode(), data.pNewTargetNode(),
                     data.newEdgeState()};
    place(at(data.pNewOwnerGraph(), EdgesByState + data.newEdgeState()), edge, data.pNewPrevious());
    if (data.pOldOwnerGraph() == nullptr) {
        enterEnds(edge);
        lookAtMember(*edge);
    } else if (m_graphs.count(data.pOldOwnerGraph()) == 0) {
        lookAtMember(*edge);
        for (const QxNode* end : {data.pNewSourceNode(), data.pNewTargetNode()}) {
            end != nullptr ? look(*end) : void();
        }
    }
}

void GraphFollower::hearOfEdge(const QxGraphChangeEventData& data) {
    const QxEdge* edge = data.pSourceEdge();
    if (data.type() == EdgeInserted) {
        return hearOfEdgeInserted(data);
    }
    leaveEnds(edge);
    Edge& known = m_edges.at(edge);
    if ((data.type() & (EdgeRemoved | EdgeDiscarded)) != 0) {
        std::erase(at(data.pOldOwnerGraph(), EdgesByState + data.oldEdgeState()), edge);
        m_edges.erase(edge);
        return;
    }
    if ((data.type() & (EdgeEndsChanged | EdgeReversed)) != 0) {
        known.source = data.pNewSourceNode();
        known.target = data.pNewTargetNode();
    } else {
        std::erase(at(known.owner, EdgesByState + data.oldEdgeState()), edge);
        known.state = data.newEdgeState();
        place(at(known.owner, EdgesByState + known.state), edge, data.pNewPrevious());
    }
    enterEnds(edge);
}

bool GraphFollower::isSame(const QxObject* owner, int list, const QxDList& real) const {
    const auto known = m_lists.find({owner, list});
    return (known != m_lists.end() ? known->second : Objects()) == heardIn(real);
}

std::string GraphFollower::differenceAt(const QxGraphMember& member) const {
    const auto child = m_children.find(&member);
    const auto name = m_names.find(&member);
    return child == m_children.end() || child->second != member.pChildGraph() ? "told child graph"
           : name == m_names.end() || name->second != nameOf(member.pNameString()) ? "told name"
                                                                                   : "";
}

std::string GraphFollower::differenceAt(const QxGraph& graph) const {
    if (!isSame(&graph, Contents, *graph.pNodeList())) {
        return "told nodes";
    }
    int state = QxEdgeIsDisconnected;
    for (const QxEdgeDList* list :
         {graph.pDisconnectedEdgeList(), graph.pEdgeList(), graph.pDeactivatedEdgeList()}) {
        if (!isSame(&graph, EdgesByState + state, *list)) {
            return "told edges of state " + std::to_string(state);
        }
        ++state;
    }
    for (const QxNode* node : objectsOf<QxNode>(*graph.pNodeList())) {
        for (const auto& [list, edges] : ListsAtNode) {
            if (!isSame(node, list, *(node->*edges)())) {
                return "told list " + std::to_string(list) + " of a node";
            }
        }
        if (const std::string what = differenceAt(*node); !what.empty()) {
            return what + " of a node";
        }
    }
    QxEdgeDList edges;
    graph.buildAllEdgeList(&edges);
    for (const QxEdge* edge : edgesOf(&edges)) {
        const Edge& known = m_edges.at(edge);
        if (known.owner != &graph || known.source != edge->pSourceNode() ||
            known.target != edge->pTargetNode()) {
            return "told ends of an edge";
        }
        if (const std::string what = differenceAt(*edge); !what.empty()) {
            return what + " of an edge";
        }
    }
    const QxGraphMember* parent = graph.pParentGraphMember();
    const auto told = parent != nullptr ? m_children.find(parent) : m_children.end();
    return parent != nullptr && (told == m_children.end() || told->second != &graph) ? "told parent"
                                                                                     : "";
}

std::string GraphFollower::differenceAt(const QxGraphManager& manager) const {
    if (!isSame(&manager, Contents, *manager.pGraphList())) {
        return "told graphs";
    }
    for (const QxGraph* graph : objectsOf<QxGraph>(*manager.pGraphList())) {
        if (const std::string what = differenceAt(*graph); !what.empty()) {
            return what;
        }
    }
    const QxGraph* between = manager.pQueryIntergraph();
    return between != nullptr ? differenceAt(*between) : "";
}

std::string GraphFollower::difference(const GraphModel& model, const QxAFactory& factory) const {
    if (!m_misfit.empty()) {
        return m_misfit;
    }
    for (const ModelManager* manager : model.managers()) {
        const std::string what = manager->factory == &factory ? differenceAt(*manager->object) : "";
        if (!what.empty()) {
            return what;
        }
    }
    return "";
}

}  // namespace qxtest
