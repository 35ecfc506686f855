#include <gtest/gtest.h>

#include <memory>

#include "archive/read_helpers.h"

using namespace CorvaneCore;

namespace {

// A minimal family: a node with one optional child, read through the shared helpers.
class Node : public CorvaneSerializable {
public:
    int getType() { return 3; }
    bool serialize(QuickArchive& a) override {
        writeVersion(a, 1);
        a.write(value);
        return writeOptionalChild(a, child);
    }
    bool deserialize(QuickArchive& a) override {
        uint32_t major = 0;
        if (!readVersion(a, major) || major != 1) return false;
        a.read(value);
        return readOptionalChild<Node>(a, child, &create);
    }
    static std::shared_ptr<Node> create(int id) {
        return id == 3 ? std::make_shared<Node>() : nullptr;
    }

    int32_t value = 0;
    std::shared_ptr<Node> child;
};

std::shared_ptr<Node> chain(int length) {
    auto root = std::make_shared<Node>();
    Node* tail = root.get();
    for (int i = 1; i < length; ++i) {
        tail->child = std::make_shared<Node>();
        tail->child->value = i;
        tail = tail->child.get();
    }
    return root;
}

// A node of version 1 and value 0 whose present child starts with the type id `childId`.
QuickArchive parentOf(int32_t childId) {
    QuickArchive a;
    writeVersion(a, 1), a.write(int32_t(0)), a.write(true), a.write(childId);
    return a;
}

}  // namespace

TEST(ChildForms, OptionalChildRoundTripAndAnAbsentOneTakesOneByte) {
    QuickArchive a;
    ASSERT_TRUE(chain(3)->serialize(a));
    Node back;
    ASSERT_TRUE(back.deserialize(a));
    ASSERT_NE(back.child->child, nullptr);
    EXPECT_EQ(back.child->child->value, 2);
    EXPECT_EQ(a.readPos(), a.writePos());

    QuickArchive leaf;
    ASSERT_TRUE(Node().serialize(leaf));
    EXPECT_EQ(leaf.writePos(), 4u + 4u + 1u);
    ASSERT_TRUE(back.deserialize(leaf));
    EXPECT_NE(back.child, nullptr);  // an absent child leaves the slot as it is
}

TEST(ChildForms, UnknownChildIdAndNonZeroMinorRefuseTheRead) {
    QuickArchive a = parentOf(99);
    Node back;
    EXPECT_FALSE(back.deserialize(a));
    EXPECT_EQ(back.child, nullptr);

    QuickArchive minor;
    minor.write(uint32_t(0x10001));
    EXPECT_FALSE(Node().deserialize(minor));
}

TEST(ChildForms, NestingDeeperThanTheLimitIsRefused) {
    QuickArchive ok;
    ASSERT_TRUE(chain(kMaxNestingDepth + 1)->serialize(ok));
    Node back;
    EXPECT_TRUE(back.deserialize(ok));
    EXPECT_EQ(ok.readDepth(), 0);

    QuickArchive deep;
    ASSERT_TRUE(chain(kMaxNestingDepth + 2)->serialize(deep));
    Node refused;
    EXPECT_FALSE(refused.deserialize(deep));
    EXPECT_EQ(deep.readDepth(), 0);  // the guard unwinds on failure too
}

TEST(ChildForms, HostileSelfNestingStopsAtTheLimit) {
    // A record that nests itself without end, as far as its bytes go.
    QuickArchive a;
    for (int i = 0; i < 100000; ++i)
        writeVersion(a, 1), a.write(int32_t(i)), a.write(true), a.write(int32_t(3));
    EXPECT_FALSE(Node().deserialize(a));
}

TEST(ChildForms, AFailingOptionalChildStaysInItsSlotPartlyRead) {
    // The child (value 7) reads its value, then its own child names an unknown id.
    QuickArchive a = parentOf(3);
    writeVersion(a, 1), a.write(int32_t(7)), a.write(true), a.write(int32_t(99));
    Node back;
    back.child = std::make_shared<Node>();
    const std::shared_ptr<Node> before = back.child;
    EXPECT_FALSE(back.deserialize(a));
    ASSERT_NE(back.child, nullptr);
    EXPECT_NE(back.child, before);  // the new child, not the old one
    EXPECT_EQ(back.child->value, 7);
    EXPECT_EQ(back.child->child, nullptr);  // an unknown id leaves its slot empty
}

TEST(ChildForms, RequiredChildIsStoredOnlyAfterItReadUnlessReadInPlace) {
    QuickArchive a;
    a.write(int32_t(3));
    a.write(uint32_t(0x20000));  // a version the child refuses
    std::shared_ptr<Node> slot;
    EXPECT_FALSE(readRequiredChild<Node>(a, slot, &Node::create));
    EXPECT_EQ(slot, nullptr);
    a.setReadPos(0);
    EXPECT_FALSE(readRequiredChildInPlace<Node>(a, slot, &Node::create));
    EXPECT_NE(slot, nullptr);

    QuickArchive b;
    auto child = chain(1);
    child->value = 5;
    ASSERT_TRUE(writeRequiredChild(b, child));
    slot.reset();
    ASSERT_TRUE(readRequiredChild<Node>(b, slot, &Node::create));
    EXPECT_EQ(slot->value, 5);
    EXPECT_FALSE(writeRequiredChild(b, std::shared_ptr<Node>()));
}

TEST(ChildForms, GroupWritesBothIdsFirst) {
    QuickArchive a;
    auto first = chain(1), second = chain(1);
    first->value = 1, second->value = 2;
    ASSERT_TRUE(writeChildPair(a, first, second));
    int32_t ids[2] = {0, 0};
    a.read(ids[0]), a.read(ids[1]);
    a.setReadPos(0);
    std::shared_ptr<Node> x, y;
    ASSERT_TRUE((readChildPair<Node, Node>(a, x, &Node::create, y, &Node::create)));
    EXPECT_EQ(std::make_pair(ids[0], ids[1]), std::make_pair(3, 3));
    EXPECT_EQ(std::make_pair(x->value, y->value), std::make_pair(1, 2));

    QuickArchive none;
    EXPECT_FALSE(writeChildPair(none, first, std::shared_ptr<Node>()));
    EXPECT_EQ(none.writePos(), 0u);

    // Both enter their slots before reading: a second child that fails stays, as made.
    QuickArchive refused;
    refused.write(int32_t(3)), refused.write(int32_t(3));
    ASSERT_TRUE(first->serialize(refused));
    refused.write(uint32_t(0x20000));
    std::shared_ptr<Node> p, q;
    EXPECT_FALSE((readChildPair<Node, Node>(refused, p, &Node::create, q, &Node::create)));
    ASSERT_TRUE(p && q);
    EXPECT_EQ(std::make_pair(p->value, q->value), std::make_pair(1, 0));

    // An unknown id in either refuses the pair before any child reads.
    QuickArchive unknown;
    unknown.write(int32_t(3)), unknown.write(int32_t(8));
    ASSERT_TRUE(first->serialize(unknown));
    EXPECT_FALSE((readChildPair<Node, Node>(unknown, p, &Node::create, q, &Node::create)));
    EXPECT_EQ(q, nullptr);
    EXPECT_EQ(p->value, 0);  // made, but never read
}

TEST(ReadTrace, NamesTheInnermostRefusalOrTheUnknownTypeId) {
    QuickArchive a = parentOf(3);
    a.write(uint32_t(0x70000));  // the child's word: a major it does not know
    ReadTrace trace;
    a.setTrace(&trace);
    Node root;
    EXPECT_FALSE(readTracedObject(a, root));
    EXPECT_EQ(trace.failureText(),
              "unlisted class refused the read at version word 0x70000 (byte 13)");
    EXPECT_EQ(trace.treeText(),
              "unlisted class version 1 bytes 0..17 REFUSED\n"
              "  unlisted class version 7 bytes 13..17 REFUSED\n");

    QuickArchive unknown = parentOf(42);
    ReadTrace idTrace;
    unknown.setTrace(&idTrace);
    EXPECT_FALSE(readTracedObject(unknown, root));
    EXPECT_EQ(idTrace.failureText(),
              "type id 42 at byte 9 has no class in the unlisted class family");

    QuickArchive untraced;  // reading without a trace is unchanged
    ASSERT_TRUE(chain(4)->serialize(untraced));
    EXPECT_TRUE(readTracedObject(untraced, root) && untraced.trace() == nullptr);
}
