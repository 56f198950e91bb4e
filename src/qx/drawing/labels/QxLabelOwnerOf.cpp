// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// What nodes, edges, connectors and graphs do with their labels, once for all of them. What differs
// between the kinds of owners stands in overloads: where a new label goes, and what there is to be
// told when one has come or gone.

#include "qx/drawing/QxLabelOwnerOf.h"

#include <ostream>

#include "qx/drawing/QxConnector.h"
#include "qx/drawing/QxConnectorLabel.h"
#include "qx/drawing/QxDEdge.h"
#include "qx/drawing/QxDGraph.h"
#include "qx/drawing/QxDNode.h"
#include "qx/drawing/QxEdgeLabel.h"
#include "qx/drawing/QxGraphLabel.h"
#include "qx/drawing/QxNodeLabel.h"
#include "qx/drawing/bounds/internal/Change.h"
#include "qx/drawing/bounds/internal/Coverage.h"
#include "qx/drawing/internal/Extras.h"
#include "qx/drawing/labels/internal/DefaultPlaces.h"
#include "qx/drawing/labels/internal/LabelPresence.h"
#include "qx/events/internal/FireDrawingChange.h"
#include "qx/foundation/graph/internal/EachObject.h"
#include "qx/foundation/util/QxDebugStream.h"
#include "qx/foundation/util/internal/Ref.h"

using qx::internal::Change;
using qx::internal::Coverage;
using qx::internal::each;
using qx::internal::LabelPresence;
using qx::internal::Ref;
using qx::internal::Snapshot;

namespace {

// The sequence around every change, by owner.

template <class Owner, class Act>
void changeIn(Owner& owner, const Act& act) {
    Change::run(owner, act);
}
template <class Act>
void changeIn(QxDGraph& graph, const Act& act) {
    Change::inGraph(graph, act);
}

// The labels of an owner have become more or less.

void tellPresence(QxDNode& node) {
    LabelPresence::ownChanged(node);
}
void tellPresence(QxDEdge& edge) {
    LabelPresence::changed(edge);
}
void tellPresence(QxConnector& connector) {
    LabelPresence::changed(connector);
}
void tellPresence(QxDGraph& graph) {
    Coverage::ownLabelsChanged(graph);
}

}  // namespace

template <class Owner, class Label>
QxLabelManager* QxLabelOwnerOf<Owner, Label>::pQueryLabelManager() const {
    const Ref<QxLabelManager>* slot = self().pQueryLabelSlot();
    return slot != nullptr ? slot->get() : nullptr;
}

template <class Owner, class Label>
QxLabelManager* QxLabelOwnerOf<Owner, Label>::pLabelManager() {
    auto& slot = self().labelSlot();
    if (!slot) {
        slot = Ref<QxLabelManager>::adopt(new QxLabelManager(&self()));
    }
    return slot.get();
}

template <class Owner, class Label>
const typename QxLabelOwnerOf<Owner, Label>::LabelList* QxLabelOwnerOf<Owner, Label>::pLabelList()
    const {
    const QxLabelManager* labels = pQueryLabelManager();
    return labels != nullptr && labels->m_labels.isEmpty() == 0
               ? LabelList::constCastCross(&labels->m_labels)
               : nullptr;
}

template <class Owner, class Label>
std::int32_t QxLabelOwnerOf<Owner, Label>::numberOfLabels() const {
    const QxLabelManager* labels = pQueryLabelManager();
    return labels != nullptr ? labels->m_labels.count() : 0;
}

template <class Owner, class Label>
Label* QxLabelOwnerOf<Owner, Label>::addLabel(const wchar_t* name, int flag) {
    return self().vAddLabel(name, flag);
}

template <class Owner, class Label>
Label* QxLabelOwnerOf<Owner, Label>::insertLabel(Label* label) {
    return self().vInsertLabel(label);
}

template <class Owner, class Label>
Label* QxLabelOwnerOf<Owner, Label>::removeLabel(Label* label) {
    return self().vRemoveLabel(label);
}

template <class Owner, class Label>
int QxLabelOwnerOf<Owner, Label>::discardLabel(Label* label) {
    return self().vDiscardLabel(label);
}

template <class Owner, class Label>
Label* QxLabelOwnerOf<Owner, Label>::newNamedLabel(const wchar_t* name, int flag) {
    Label* label = self().vNewLabel(flag);
    if (label != nullptr && name != nullptr) {
        label->nameString(name);
    }
    return label;
}

template <class Owner, class Label>
Label* QxLabelOwnerOf<Owner, Label>::insertNew(Label* label) {
    const Ref alive(*label);
    if (self().vInsertLabel(label) == nullptr) {
        label->vRelease();
        return nullptr;
    }
    return owns(*label) ? label : nullptr;
}

template <class Owner, class Label>
Label* QxLabelOwnerOf<Owner, Label>::addPlacedLabel(const wchar_t* name, int flag) {
    const Ref alive(self());
    Label* label = newNamedLabel(name, flag);
    if (label == nullptr) {
        return nullptr;
    }
    qx::internal::placeByDefault(self(), *label, numberOfLabels());
    return insertNew(label);
}

template <class Owner, class Label>
Label* QxLabelOwnerOf<Owner, Label>::addLabelWithCoordinates(const QxPoint& center,
                                                             const QxSize& size, int inOwnGraph,
                                                             const wchar_t* name, int flag) {
    const Ref alive(self());
    Label* label = newNamedLabel(name, flag);
    if (label == nullptr) {
        return nullptr;
    }
    QxPoint place = center;
    QxSize extent = size;
    if (const QxDGraph* graph = inOwnGraph == 0 ? qx::internal::graphAround(self()) : nullptr) {
        graph->inverseExpandedTransformPoint(place);
        graph->inverseExpandedTransformSize(extent);
    }
    qx::internal::placeAt(self(), *label, place);
    label->ntResize(extent);
    return insertNew(label);
}

template <class Owner, class Label>
bool QxLabelOwnerOf<Owner, Label>::owns(const Label& label) const {
    return label.ownerValid() != 0 && label.pOwner() == &self();
}

template <class Owner, class Label>
Label* QxLabelOwnerOf<Owner, Label>::linkLabel(Label* label) {
    if (label == nullptr || label->ownerValid() != 0) {
        return nullptr;
    }
    Owner& owner = self();
    const Ref ownerAlive(owner);
    const Ref alive(*label);
    changeIn(owner, [&] {
        pLabelManager()->m_labels.appendCell(&label->m_ownerCell);
        label->actOnChangeOwner(&owner, 1);
        tellPresence(owner);
        Coverage::changed(*label);
    });
    if (owns(*label)) {
        qx::internal::fireDrawingChange(*label, LabelInserted, [&] {
            return new QxDrawingChangeEventData(label, nullptr, &owner);
        });
    }
    return label;
}

template <class Owner, class Label>
Label* QxLabelOwnerOf<Owner, Label>::unlinkLabel(Label* label) {
    if (label == nullptr || !owns(*label)) {
        return nullptr;
    }
    Owner& owner = self();
    const Ref ownerAlive(owner);
    const Ref alive(*label);
    changeIn(owner, [&] {
        Coverage::ended(*label);
        pLabelManager()->m_labels.removeCell(&label->m_ownerCell);
        label->actOnChangeOwner(owner.pUnverifiedFactory(), 0);
        tellPresence(owner);
    });
    if (label->hasFlag(qx::flags::LabelGoing) == 0 && label->ownerValid() == 0) {
        qx::internal::fireDrawingChange(owner, LabelRemoved, [&] {
            return new QxDrawingChangeEventData(label, &owner, nullptr);
        });
    }
    return label->ownerValid() == 0 ? label : nullptr;
}

template <class Owner, class Label>
int QxLabelOwnerOf<Owner, Label>::destroyLabel(Label* label) {
    if (label == nullptr || !owns(*label)) {
        return 0;
    }
    Owner& owner = self();
    const Ref ownerAlive(owner);
    const Ref alive(*label);
    label->setFlag(qx::flags::LabelGoing, 1);
    const bool removed = owner.vRemoveLabel(label) != nullptr;
    label->setFlag(qx::flags::LabelGoing, 0);
    if (!removed) {
        return 0;
    }
    qx::internal::fireDrawingChange(owner, LabelDiscarded, [&] {
        return new QxDrawingChangeEventData(label, &owner, nullptr);
    });
    if (label->ownerValid() == 0) {  // or a listener has found a place for it
        qx::internal::endEventSource(*label);
        label->vRelease();
    }
    return 1;
}

template <class Owner, class Label>
void QxLabelOwnerOf<Owner, Label>::discardAllLabels() {
    if (pLabelList() == nullptr) {
        return;
    }
    Owner& owner = self();
    const Ref alive(owner);
    changeIn(owner, [&] {
        for (Label* label : Snapshot<Label>(pLabelList())) {
            if (owns(*label)) {
                owner.vDiscardLabel(label);
            }
        }
    });
    if (pLabelList() == nullptr && pQueryLabelManager() != nullptr) {
        owner.labelSlot() = Ref<QxLabelManager>();
    }
}

template <class Owner, class Label>
void QxLabelOwnerOf<Owner, Label>::dropLabels() {
    if (pQueryLabelManager() == nullptr) {
        return;
    }
    const Ref<QxLabelManager> labels = std::move(self().labelSlot());
    for (Label* label : each<Label>(labels->m_labels)) {
        labels->m_labels.removeCell(&label->m_ownerCell);
        label->actOnChangeOwner(self().pUnverifiedFactory(), 0);
        label->vRelease();
    }
}

template <class Owner, class Label>
Label* QxLabelOwnerOf<Owner, Label>::getClonedLabel(Label* label) const {
    if (label == nullptr) {
        return nullptr;
    }
    auto* clone = static_cast<Label*>(label->pIUserField());
    if (clone == nullptr) {
        clone = label->cloneAttributes();
        label->pIUserField(clone);
    }
    return clone;
}

template <class Owner, class Label>
void QxLabelOwnerOf<Owner, Label>::duplicateLabelsOf(const Owner& source) {
    const Ref alive(self());
    for (Label* label : Snapshot<Label>(source.QxLabelOwnerOf::pLabelList())) {
        Label* clone = getClonedLabel(label);
        if (clone->ownerValid() == 0 && self().vInsertLabel(clone) == nullptr) {
            label->pIUserField(nullptr);
            clone->vRelease();
        }
    }
}

template <class Owner, class Label>
void QxLabelOwnerOf<Owner, Label>::copyIntoLabel(Label& label, const Label& source, int deep) {
    Owner& owner = self();
    const Ref ownerAlive(owner);
    const Ref alive(label);
    const Ref sourceAlive(source);
    const QxDListCell* before = label.m_ownerCell.pPreviousCell();
    const Ref previous(before != nullptr ? static_cast<Label*>(before->pObject()) : nullptr);
    changeIn(owner, [&] {
        if (owner.vRemoveLabel(&label) == nullptr) {
            return;
        }
        if (deep != 0) {
            label.copyObject(&source);
        } else {
            label.copyAttributes(&source);
        }
        if (owner.vInsertLabel(&label) == nullptr || !owns(label)) {
            return;
        }
        if (!previous || owns(*previous)) {
            QxLabelDList& list = pLabelManager()->m_labels;
            list.transferCell(&label.m_ownerCell, &list,
                              previous ? &previous->m_ownerCell : nullptr);
        }
    });
}

template <class Owner, class Label>
int QxLabelOwnerOf<Owner, Label>::labelUserFieldsInUse(bool internal) const {
    if (const QxLabelManager* labels = pQueryLabelManager()) {
        for (const Label* label : each<Label>(labels->m_labels)) {
            if ((internal ? label->internalUserFieldsInUse() : label->userFieldsInUse()) != 0) {
                return 1;
            }
        }
    }
    return 0;
}

template <class Owner, class Label>
void QxLabelOwnerOf<Owner, Label>::nullLabelUserFields(bool internal) {
    if (const QxLabelManager* labels = pQueryLabelManager()) {
        for (Label* label : each<Label>(labels->m_labels)) {
            if (internal) {
                label->nullInternalUserFields();
            } else {
                label->nullUserFields();
            }
        }
    }
}

template <class Owner, class Label>
void QxLabelOwnerOf<Owner, Label>::debugOutputOwnLabels(int depth) const {
    if (const QxLabelManager* labels = pQueryLabelManager()) {
        for (const Label* label : each<Label>(labels->m_labels)) {
            label->innerDebugOutput(depth);
        }
    }
}

template <class Owner, class Label>
int QxLabelOwnerOf<Owner, Label>::checkOwnLabels() const {
    const QxLabelManager* labels = pQueryLabelManager();
    if (labels == nullptr) {
        return 1;
    }
    for (const Label* label : each<Label>(labels->m_labels)) {
        if (!owns(*label)) {
            qxDebugStream() << "labels: a listed one has another owner\n";
            return 0;
        }
        if (label->checkInvariants() == 0) {
            return 0;
        }
    }
    return labels->m_labels.checkInvariants();
}

template class QxLabelOwnerOf<QxDNode, QxNodeLabel>;
template class QxLabelOwnerOf<QxDEdge, QxEdgeLabel>;
template class QxLabelOwnerOf<QxConnector, QxConnectorLabel>;
template class QxLabelOwnerOf<QxDGraph, QxGraphLabel>;
