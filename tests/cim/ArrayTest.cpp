// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/Exception.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace Pegasus;

namespace {

template <class T>
std::vector<T> _items(const Array<T>& array) {
    return std::vector<T>(array.getData(), array.getData() + array.size());
}

using Numbers = std::vector<Uint32>;

Array<Uint32> _oneTwoThree() {
    Array<Uint32> array;
    for (Uint32 i = 1; i <= 3; ++i)
        array.append(i);
    return array;
}

}  // namespace

TEST(Array, IsMadeOfItems) {
    const Uint32 items[] = {4, 5};
    EXPECT_EQ(_items(Array<Uint32>(items, 2)), (Numbers{4, 5}));
    EXPECT_EQ(_items(Array<Uint32>(2, 7U)), (Numbers{7, 7}));
    EXPECT_EQ(_items(Array<Uint32>(2)), (Numbers{0, 0}));
    EXPECT_EQ(Array<String>(2)[1], "");
    EXPECT_EQ(Array<Uint32>().size(), 0U);
}

TEST(Array, GrowsAtBothEndsAndInside) {
    Array<Uint32> array = _oneTwoThree();
    const Uint32 more[] = {8, 9};
    array.prepend(0);
    array.append(more, 2);
    array.insert(1, 77);
    array.insert(7, 10);
    EXPECT_EQ(_items(array), (Numbers{0, 77, 1, 2, 3, 8, 9, 10}));
    array.insert(0, more, 2);
    array.prepend(more, 1);
    array.grow(2, 5);
    EXPECT_EQ(_items(array), (Numbers{8, 8, 9, 0, 77, 1, 2, 3, 8, 9, 10, 5, 5}));
    EXPECT_THROW(array.insert(14, 1), IndexOutOfBoundsException);
}

TEST(Array, Removes) {
    Array<Uint32> array = _oneTwoThree();
    const Array<Uint32> before(array);
    array.remove(0);
    EXPECT_EQ(_items(array), (Numbers{2, 3}));
    array.append(4);
    array.remove(1, 2);
    EXPECT_EQ(_items(array), (Numbers{2}));
    EXPECT_EQ(_items(before), (Numbers{1, 2, 3}));
    EXPECT_THROW(array.remove(1), IndexOutOfBoundsException);
    EXPECT_THROW(array.remove(0, 2), IndexOutOfBoundsException);
    EXPECT_THROW(array.remove(5, Uint32(-4)), IndexOutOfBoundsException);
    array.remove(0);
    EXPECT_EQ(array.size(), 0U);
    EXPECT_THROW(array.remove(0), IndexOutOfBoundsException);
}

TEST(Array, ChecksIndexes) {
    Array<Uint32> array = _oneTwoThree();
    const Array<Uint32>& constant = array;
    EXPECT_EQ(constant[2], 3U);
    EXPECT_THROW(array[3], IndexOutOfBoundsException);
    EXPECT_THROW(constant[3], IndexOutOfBoundsException);
    EXPECT_THROW(Array<Boolean>()[0], IndexOutOfBoundsException);
}

TEST(Array, CopiesAreIndependent) {
    Array<Uint32> original = _oneTwoThree();
    Array<Uint32> copy(original);
    copy[0] = 9;
    EXPECT_EQ(original[0], 1U);
    copy = original;
    copy.append(4);
    copy.remove(0);
    original.clear();
    EXPECT_EQ(original.size(), 0U);
    EXPECT_EQ(_items(copy), (Numbers{2, 3, 4}));
}

TEST(Array, CopiesShareStorageUntilOneChanges) {
    Array<Uint32> original = _oneTwoThree();
    Array<Uint32> copy(original);
    EXPECT_EQ(copy.getData(), original.getData());
    copy[0] = 1;
    EXPECT_NE(copy.getData(), original.getData());
}

TEST(Array, TakesItsOwnElements) {
    Array<String> array;
    array.append("a");
    for (int i = 0; i < 5; ++i)
        array.append(array[0]);
    array.appendArray(array);
    array.insert(1, array.getData(), array.size());
    array.grow(100, array[0]);
    ASSERT_EQ(array.size(), 124U);
    for (Uint32 i = 0; i < array.size(); ++i)
        EXPECT_EQ(array[i], "a");
}

TEST(Array, IsAssignedFromItsElement) {
    struct Tree {
        Array<Tree> children;
    };
    Tree tree;
    tree.children.append(Tree());
    tree.children[0].children.grow(2, Tree());
    tree.children = tree.children[0].children;
    EXPECT_EQ(tree.children.size(), 2U);
    const Array<Tree>& itself = tree.children;
    tree.children = itself;
    EXPECT_EQ(tree.children.size(), 2U);
}

TEST(Array, ReservesRoom) {
    Array<Uint32> array = _oneTwoThree();
    array.reserveCapacity(100);
    EXPECT_GE(array.getCapacity(), 100U);
    EXPECT_EQ(_items(array), (Numbers{1, 2, 3}));
    const Uint32* const place = array.getData();
    array.grow(97, 0);
    EXPECT_EQ(array.getData(), place);
}

TEST(Array, Swaps) {
    Array<Uint32> one = _oneTwoThree();
    Array<Uint32> none;
    one.swap(none);
    EXPECT_EQ(one.size(), 0U);
    EXPECT_EQ(none.size(), 3U);
}

TEST(Array, DestroysWhatItHolds) {
    const auto counted = std::make_shared<int>(1);
    {
        Array<std::shared_ptr<int>> array(3, counted);
        EXPECT_EQ(counted.use_count(), 4);
        array.remove(0);
        EXPECT_EQ(counted.use_count(), 3);
        const Array<std::shared_ptr<int>> copy(array);
        array[0].reset();
        EXPECT_EQ(copy[0], counted);
        array.clear();
        EXPECT_EQ(counted.use_count(), 3);
    }
    EXPECT_EQ(counted.use_count(), 1);
}
