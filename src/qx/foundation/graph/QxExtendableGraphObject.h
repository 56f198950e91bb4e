// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/graph/QxGraphObject.h"

/// A graph object that algorithms of the graph layer may work on.
class QX_API QxGraphAlgObject : public QxGraphObject {
public:
    using QxGraphObject::QxGraphObject;
};

/// A graph object that the drawing layers extend with geometry: graphs, nodes, edges, connectors.
class QX_API QxExtendableGraphObject : public QxGraphAlgObject {
public:
    using QxGraphAlgObject::QxGraphAlgObject;
};
