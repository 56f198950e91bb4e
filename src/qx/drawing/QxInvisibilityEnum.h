// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

/// Why an object does not show.
enum QxInvisibilityEnum {
    QxInvisibleNot = 0,                ///< it shows
    QxInvisibleUnowned = 1,            ///< no graph, or no graph manager, lists it
    QxInvisibleHidden = 2,             ///< it, or a node around it, lies in a hide graph
    QxInvisibleCollapsed = 3,          ///< inside a collapsed node
    QxInvisibleFolded = 4,             ///< inside a collapsed folder node
    QxInvisibleOutsideAnchor = 5,      ///< its graph does not lie under the anchor graph
    QxInvisibleNotConnected = 6,       ///< the edge is disconnected or deactivated
    QxInvisibleEndsCoverEachOther = 7  ///< nothing of the edge is left between its ends
};
