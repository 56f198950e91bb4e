// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxDListIter.h"
#include "qx/foundation/util/QxEvent.h"
#include "qx/foundation/util/QxGroupEventData.h"

namespace qx::internal {

/// Calls `act` with the data of the event, or with each member's when it is a group.
template <class Data, class Act>
void eachEventData(const QxEvent& event, const Act& act) {
    const auto actOn = [&](QxObject* object) {
        if (auto* data = dynamic_cast<Data*>(object)) {
            act(data);
        }
    };
    if (event.isGroup() == 0) {
        actOn(event.pData());
        return;
    }
    const auto* group = static_cast<const QxGroupEventData*>(event.pData());
    for (QxDListIter iter(group->pDataList()); iter; ++iter) {
        actOn(iter.pObject());
    }
}

}  // namespace qx::internal
