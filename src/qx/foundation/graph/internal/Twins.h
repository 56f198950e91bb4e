// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qx/foundation/graph/QxGraphObject.h"
#include "qx/foundation/util/internal/Ref.h"

namespace qx::internal {

/// The duplicates that a running duplication has made. The scratch field of every source object
/// leads to its duplicate; both are kept alive until the work is over, for listeners hear of it.
class Twins {
public:
    void keep(QxGraphObject* twin) { m_twins.add(twin); }
    void link(QxGraphObject* source, QxGraphObject* twin) {
        m_sources.add(source);
        source->pIUserField(twin);
    }
    /// Cuts the links of sources that have been taken out meanwhile: whoever clears the scratch
    /// fields of the whole source will not come by them.
    template <class IsWithin>
    void unlinkUnless(const IsWithin& isWithin) const {
        for (QxGraphObject* source : m_sources) {
            if (!isWithin(source->ownerValid() != 0 ? source->pOwner() : nullptr)) {
                source->pIUserField(nullptr);
            }
        }
    }

private:
    Snapshot<QxGraphObject> m_twins;
    Snapshot<QxGraphObject> m_sources;
};

}  // namespace qx::internal
