// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/drawing/QxGeometricUpdateInfo.h"

namespace qx::internal {

/// The four moments at which an object tells a record what it covers.
enum class Moment : unsigned char { BeforeRemove, AfterInsert, BeforeChange, AfterChange };

/// Whether the change has been made already.
constexpr bool isAfter(Moment moment) {
    return moment == Moment::AfterInsert || moment == Moment::AfterChange;
}

/// What has ceased to show at such a moment is told of as if the change were still to come.
constexpr Moment goneAt(Moment moment) {
    return moment == Moment::AfterInsert ? Moment::BeforeRemove : Moment::BeforeChange;
}

/// Tells the record that the object covers, or covered, the rectangle.
inline void collect(QxGeometricUpdateInfo& info, Moment moment, const QxGraphObject& object,
                    const QxRect& rect) {
    switch (moment) {
        case Moment::BeforeRemove:
            info.updateBeforeRemove(&object, rect);
            break;
        case Moment::AfterInsert:
            info.updateAfterInsert(&object, rect);
            break;
        case Moment::BeforeChange:
            info.updateBeforeGeometryChanges(&object, rect);
            break;
        case Moment::AfterChange:
            info.updateAfterGeometryChanges(&object, rect);
            break;
    }
}

}  // namespace qx::internal
