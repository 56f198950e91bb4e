// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

#include "qx/foundation/util/QxOwnedObject.h"

#include <gtest/gtest.h>

namespace {

class Owned : public QxOwnedObject {
public:
    using QxOwnedObject::ownerValid;
    using QxOwnedObject::pOwner;
};

TEST(QxOwnedObject, CopiesDoNotInheritTheOwner) {
    Owned owner;
    Owned member;
    EXPECT_EQ(member.pOwner(&owner), &owner);
    EXPECT_EQ(member.ownerValid(7), 1);
    member.isReadOnly(1);
    Owned copy(member);
    EXPECT_EQ(copy.pOwnerObject(), nullptr);
    EXPECT_EQ(copy.ownerValid(), 0);
    member = copy;
    EXPECT_EQ(member.pOwnerObject(), &owner);
    EXPECT_EQ(member.ownerValid(), 1);
    EXPECT_EQ(member.ownerValid(0), 0);
    EXPECT_EQ(member.isReadOnly(), 1);
}

}  // namespace
