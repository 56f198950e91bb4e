// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/util/QxObject.h"

/// A piece of work that is set up, done and cleared up again, always in this order.
class QX_API QxGLTAlgorithm : public QxObject {
public:
    /// Runs the algorithm to its end. It may be run again afterwards.
    void run();

protected:
    /// Brings up what the body needs. Overrides call the base first.
    virtual void initialize();
    virtual void algorithmBody() = 0;
    /// Clears up, also when the body has thrown. Overrides call the base last.
    virtual void finalize();
};
