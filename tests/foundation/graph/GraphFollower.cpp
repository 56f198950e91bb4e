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

/// Shows the edge lists of a node, or the lists of a graph and of its nodes.
template <class Visit>
void visitLists(const QxNode& node, const Visit& visit) {
    visit(&node, QxListOfInEdges, *node.pInEdgeList());
    visit(&node, QxListOfOutEdges, *node.pOutEdgeList());
    visit(&node, QxListOfDisconnectedEdges, *node.pDisconnectedEdgeList());
    visit(&node, QxListOfDeactivatedEdges, *node.pDeactivatedEdgeList());
}

template <class Visit>
void visitLists(const QxGraph& graph, const Visit& visit) {
    visit(&graph, GraphFollower::Contents, *graph.pNodeList());
    int list = GraphFollower::EdgesByState + QxEdgeIsDisconnected;
    for (const QxEdgeDList* edges :
         {graph.pDisconnectedEdgeList(), graph.pEdgeList(), graph.pDeactivatedEdgeList()}) {
        visit(&graph, list++, *edges);
    }
    for (const QxNode* node : objectsOf<QxNode>(*graph.pNodeList())) {
        visitLists(*node, visit);
    }
}

Edges allEdgesOf(const QxGraph& graph) {
    QxEdgeDList edges;
    graph.buildAllEdgeList(&edges);
    return edgesOf(&edges);
}

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
    visitLists(node, [this](auto* owner, int list, const QxDList& objects) {
        at(owner, list) = heardIn(objects);
    });
}

void GraphFollower::look(const QxGraph& graph) {
    m_graphs.insert(&graph);
    m_names[&graph] = nameOf(graph.pNameString());
    visitLists(graph, [this](auto* owner, int list, const QxDList& objects) {
        at(owner, list) = heardIn(objects);
    });
    for (const QxEdge* edge : allEdgesOf(graph)) {
        lookAtMember(*edge);
        const QxEdgeStateEnum state = edge->deactivated() != 0    ? QxEdgeIsDeactivated
                                      : edge->disconnected() != 0 ? QxEdgeIsDisconnected
                                                                  : QxEdgeIsConnected;
        m_edges[edge] = {&graph, edge->pSourceNode(), edge->pTargetNode(), state};
        for (const QxNode* end : {edge->pSourceNode(), edge->pTargetNode()}) {
            end != nullptr ? look(*end) : void();
        }
    }
    for (const QxNode* node : objectsOf<QxNode>(*graph.pNodeList())) {
        lookAtMember(*node);
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
        for (const int list : {QxListOfInEdges, QxListOfOutEdges, QxListOfDisconnectedEdges,
                               QxListOfDeactivatedEdges}) {
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

std::string GraphFollower::differenceAt(const QxGraphMember& member) const {
    const auto child = m_children.find(&member);
    const auto name = m_names.find(&member);
    return child == m_children.end() || child->second != member.pChildGraph() ? "told child graph"
           : name == m_names.end() || name->second != nameOf(member.pNameString()) ? "told name"
                                                                                   : "";
}

std::string GraphFollower::differenceAt(const QxGraph& graph) const {
    std::string wrong;
    const auto check = [&](const std::string& what) { wrong = wrong.empty() ? what : wrong; };
    visitLists(graph, [&](auto* owner, int list, const QxDList& real) {
        const auto known = m_lists.find({owner, list});
        if ((known != m_lists.end() ? known->second : Objects()) != heardIn(real)) {
            check("told list " + std::to_string(list));
        }
    });
    for (const QxNode* node : objectsOf<QxNode>(*graph.pNodeList())) {
        check(differenceAt(*node));
    }
    for (const QxEdge* edge : allEdgesOf(graph)) {
        const auto known = m_edges.find(edge);
        check(differenceAt(*edge));
        check(known == m_edges.end() || known->second.owner != &graph ||
                      known->second.source != edge->pSourceNode() ||
                      known->second.target != edge->pTargetNode()
                  ? "told ends of an edge"
                  : "");
    }
    const QxGraphMember* parent = graph.pParentGraphMember();
    const auto told = parent != nullptr ? m_children.find(parent) : m_children.end();
    check(parent != nullptr && (told == m_children.end() || told->second != &graph) ? "told parent"
                                                                                    : "");
    return wrong;
}

std::string GraphFollower::differenceAt(const QxGraphManager& manager) const {
    const auto known = m_lists.find({&manager, Contents});
    if ((known != m_lists.end() ? known->second : Objects()) != heardIn(*manager.pGraphList())) {
        return "told graphs";
    }
    Graphs graphs = objectsOf<QxGraph>(*manager.pGraphList());
    if (QxGraph* between = manager.pQueryIntergraph()) {
        graphs.push_back(between);
    }
    std::string wrong = m_misfit;
    for (const QxGraph* graph : graphs) {
        wrong = wrong.empty() ? differenceAt(*graph) : wrong;
    }
    return wrong;
}

}  // namespace qxtest
