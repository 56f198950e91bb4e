// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <memory>

#include "qx/foundation/graph/QxGraphFlags.h"
#include "qx/foundation/util/QxOwnedObject.h"

class QxAFactory;
class QxText;

namespace qx::internal {
struct GraphObjectExtras;
struct IndexSlot;
}  // namespace qx::internal

/// Root of graphs, nodes, edges, connectors, labels and managers: an owned object with a name and
/// user fields. What most objects never use hangs behind one pointer, made on first use.
class QX_API QxGraphObject : public QxOwnedObject {
public:
    explicit QxGraphObject(QxOwnedObject* owner);
    ~QxGraphObject() override;

    QxGraphObject(const QxGraphObject&) = delete;
    QxGraphObject& operator=(const QxGraphObject&) = delete;

    QxObject* pParentEventSource() const override;
    QxOwnedObject* pOwnerObject() const override;

    /// 1 when a user field of this object, or of anything it contains, is set.
    virtual int userFieldsInUse() const;
    /// Clears the user fields of this object and of everything it contains.
    virtual void nullUserFields();

    /// @name Kind of object
    /// @{
    virtual int isGraphManager() const;
    virtual int isGraph() const;
    virtual int isNode() const;
    virtual int isEdge() const;
    virtual int isLabel() const;
    virtual int isConnector() const;
    virtual int isEdgeLabel() const;
    virtual int isRectangularObjectLabel() const;
    virtual int isGraphLabel() const;
    virtual int isNodeLabel() const;
    virtual int isConnectorLabel() const;
    virtual int isPathNode() const;
    virtual int isPathEdge() const;
    /// @}

    /// The name as a text object owned by this object; null when it has no name.
    virtual const QxText* pNameText() const;
    /// Whether the object is part of what is shown. By default an object without rules is.
    virtual int vIsVisible() const;
    /// The pair of userFieldsInUse and nullUserFields for the toolkit's own scratch fields.
    virtual int internalUserFieldsInUse() const;
    virtual void nullInternalUserFields();
    /// Bytes of memory this object takes itself, without what it contains.
    virtual std::size_t sizeOf() const;
    /// 1, or 0 after describing the first violation on the diagnostic stream.
    virtual int checkInvariants() const;
    /// The layer that defines the object's class: 0 abstract, 1 path objects, 2 drawing objects.
    virtual int levelNumber() const;

    int isVisible() const { return vIsVisible(); }

    /// The name; null when the object has none. Valid until the next change of the name.
    const wchar_t* pNameString() const;
    /// Gives the object a copy of `name` (null takes the name away); returns the new name.
    const wchar_t* nameString(const wchar_t* name) { return vSetNameString(name); }

    /// The factory that this object belongs to through its valid owners; null when it is detached.
    QxAFactory* pFactory() const;
    /// The same, following owners that are no longer valid, too.
    QxAFactory* pUnverifiedFactory() const;

    /// @name Fields for applications; the library never reads them
    /// @{
    std::int64_t userField() const;
    std::int64_t userField(std::int64_t value);
    QxObject* pUserField() const;
    /// Stores a pointer that stays the caller's; returns it.
    QxObject* pUserField(QxObject* object);
    /// @}

    /// @name Scratch fields of the toolkit's own algorithms
    /// @{
    std::int64_t iUserField() const;
    std::int64_t iUserField(std::int64_t value);
    QxObject* pIUserField() const;
    QxObject* pIUserField(QxObject* object);
    /// @}

    /// The processing mark that algorithms set and clear again; the setter returns what it stored.
    int marked() const { return hasFlag(qx::flags::Processing); }
    int marked(int value) {
        setFlag(qx::flags::Processing, value);
        return marked();
    }
    /// Whether the object is left out of drawing and queries while something is rearranged; the
    /// setter returns what it stored. Not for connectors, which never are.
    int temporarilyInvisible() const { return hasFlag(qx::flags::TemporarilyInvisible); }
    int temporarilyInvisible(int value) {
        setFlag(qx::flags::TemporarilyInvisible, value);
        return temporarilyInvisible();
    }

protected:
    /// Stores a copy of the name; returns it (null for none).
    virtual const wchar_t* vSetNameString(const wchar_t* name);

    /// Takes over what every copy of a graph object shares with its source: the name.
    void copyName(const QxGraphObject& source);

    /// What the object has of rarely used state; null when it has none. Made on first use.
    qx::internal::GraphObjectExtras* pQueryExtras() const { return m_extras.get(); }
    qx::internal::GraphObjectExtras& extras();
    /// Makes it, of the type in which the class keeps its own.
    virtual qx::internal::GraphObjectExtras* vNewExtras() const;

private:
    friend struct qx::internal::IndexSlot;

    std::unique_ptr<qx::internal::GraphObjectExtras> m_extras;
};
