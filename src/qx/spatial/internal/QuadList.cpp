// Copyright (c) 2026 the qxdraw authors
// SPDX-License-Identifier: MIT

// The list of a tree node, kept so that records near each other share a block.
//
// A leaf of the tree is no smaller than 2,048 units, so in a dense drawing it holds thousands of
// records, and filtering them all would decide what a query costs. Records are therefore ordered by
// their centers along a curve that visits the square quadrant by quadrant (G. M. Morton, 1966), and
// cut into blocks of at most 64: a B-tree of one level, whose directory, an array of the blocks'
// bounds, keys and numbers, is searched for insertion and filtered for queries.
//
// A key says where to insert, no more: blocks are unordered inside, and a record that moves within
// its block's bounds stays. So a small move costs a few stores, and bounds are what queries trust.
//
// Cost, r being the records of the list: inserting O(log r) and a split every 32 times, which sorts
// 64 keys half way; removing O(1), and O(64) when the record held a side of its block's bounds. A
// new or emptied block moves the rest of the directory along, 24 bytes for 64 records: a list of a
// million records takes a third of a microsecond an insertion for that. Many records with one key
// fill block after block.

#include "qx/spatial/internal/QuadList.h"

#include <algorithm>
#include <ostream>

namespace qx::internal {

namespace {

/// The lower 16 bits, with a zero bit above each.
std::uint32_t spreadBits(std::uint32_t value) {
    value = (value | (value << 8U)) & 0x00FF00FFU;
    value = (value | (value << 4U)) & 0x0F0F0F0FU;
    value = (value | (value << 2U)) & 0x33333333U;
    return (value | (value << 1U)) & 0x55555555U;
}

/// Numbers the cells of a square, 65,536 to a side or as many as it has units, along the curve.
class Curve {
public:
    explicit Curve(const QuadSquare& square)
        : m_square(square),
          m_shift(std::max(0, 47 - std::countl_zero(static_cast<std::uint64_t>(square.side)))) {}

    /// That of the box's center, or of the cell nearest to it.
    std::uint32_t keyOf(const QuadBox& box) const {
        return spreadBits(stepsFrom(m_square.left, box.minX, box.maxX)) |
               (spreadBits(stepsFrom(m_square.bottom, box.minY, box.maxY)) << 1U);
    }

private:
    std::uint32_t stepsFrom(std::int64_t start, std::int64_t low, std::int64_t high) const {
        const std::int64_t offset = ((low + high) >> 1) - start;
        return static_cast<std::uint32_t>(std::clamp<std::int64_t>(offset, 0, m_square.side - 1) >>
                                          m_shift);
    }

    const QuadSquare& m_square;
    int m_shift;
};

/// The keys of a full block's records, each with the record's position below it.
class BlockKeys {
public:
    BlockKeys(const QuadSquare& square, const QuadBlock& block) {
        const Curve curve(square);
        for (std::uint32_t at = 0; at < m_keys.size(); ++at) {
            m_keys[at] = (std::uint64_t{curve.keyOf(block.box(at))} << 8U) | at;
        }
    }
    bool areAll(std::uint32_t key) const {
        return std::all_of(m_keys.begin(), m_keys.end(),
                           [key](std::uint64_t entry) { return entry >> 8U == key; });
    }
    bool areAtMost(std::uint32_t key) const {
        return std::all_of(m_keys.begin(), m_keys.end(),
                           [key](std::uint64_t entry) { return entry >> 8U <= key; });
    }
    /// Finds the upper half; returns its smallest key.
    std::uint32_t halve() {
        const auto middle = m_keys.begin() + QuadBlock::Capacity / 2;
        std::nth_element(m_keys.begin(), middle, m_keys.end());
        for (auto entry = middle; entry != m_keys.end(); ++entry) {
            m_upper |= std::uint64_t{1} << (*entry & 0xFFU);
        }
        return static_cast<std::uint32_t>(*middle >> 8U);
    }
    /// One bit for each position whose record is in the upper half.
    std::uint64_t upperPositions() const { return m_upper; }

private:
    std::array<std::uint64_t, QuadBlock::Capacity> m_keys;
    std::uint64_t m_upper = 0;
};

}  // namespace

std::uint32_t QuadList::keyOf(const QuadSquare& square, const QuadBox& box) {
    return Curve(square).keyOf(box);
}

void QuadList::insert(QuadStore& store, const Home& home, const QuadRecord& record) {
    place(store, home, record);
    ++m_recordCount;
}

void QuadList::place(QuadStore& store, const Home& home, const QuadRecord& record) {
    if (m_count == 0) {
        openAt(store, 0, home.node, 0);
    }
    std::size_t at = 0;
    if (m_count > 1 || store.block(blockAt(0)).isFull()) {
        const std::uint32_t key = keyOf(home.square, record.box);
        at = find(key);
        if (store.block(blockAt(at)).isFull()) {
            at = splitAt(store, home, at, key);
        }
    }
    store.append(blockAt(at), record);
    fit(store.block(blockAt(at)), at, record.box);
}

void QuadList::appendBlock(QuadStore& store, std::uint32_t node,
                           std::span<const QuadRecord> records, std::uint32_t key) {
    openAt(store, m_count, node, m_count == 0 ? 0 : key);
    const std::uint32_t index = blockAt(m_count - 1);
    QuadBlock& block = store.block(index);
    for (std::uint32_t at = 0; at < records.size(); ++at) {
        store.putAt(index, at, records[at]);
        block.bounds.unite(records[at].box);
    }
    setBounds(m_count - 1, block.bounds);
    m_recordCount += records.size();
}

/// The new record has this key; returns the position of the block with room for it. A block that
/// the record would only lengthen is left full: records that come in order, or all on one spot,
/// fill their blocks.
std::size_t QuadList::splitAt(QuadStore& store, const Home& home, std::size_t at,
                              std::uint32_t key) {
    const std::uint32_t full = blockAt(at);
    BlockKeys keys(home.square, store.block(full));
    const bool isLast = at + 1 == m_count;
    if (isLast ? keys.areAtMost(key) : keys.areAll(key)) {
        openAt(store, at + 1, home.node, key);
        return at + 1;
    }
    // Records that moved since they came may lie beyond their block's stretch of the curve.
    const std::uint32_t next = isLast ? ~std::uint32_t{0} : keyAt(at + 1);
    const std::uint32_t upperKey = std::clamp(keys.halve(), keyAt(at), next);
    openAt(store, at + 1, home.node, upperKey);
    for (std::uint64_t left = keys.upperPositions(); left != 0; left &= left - 1) {
        const auto position = static_cast<std::uint32_t>(std::countr_zero(left));
        store.move(QuadStore::placeOf(full, position), blockAt(at + 1));
    }
    store.compact(full);
    for (const std::size_t half : {at, at + 1}) {
        QuadBlock& block = store.block(blockAt(half));
        block.bounds = block.unionOfBoxes();
        setBounds(half, block.bounds);
    }
    return key >= upperKey ? at + 1 : at;
}

void QuadList::remove(QuadStore& store, std::uint32_t slot, QuadStore::Place place) {
    takeOut(store, slot, place);
    --m_recordCount;
}

void QuadList::takeOut(QuadStore& store, std::uint32_t slot, QuadStore::Place place) {
    const std::uint32_t index = QuadStore::blockOf(place);
    QuadBlock& block = store.block(index);
    const QuadBox box = block.box(QuadStore::positionOf(place));
    store.remove(slot, place);
    if (block.count == 0) {
        closeAt(store, positionOf(store, index));
        return;
    }
    // A sparse block looks for company now and then, not each time.
    if (block.count <= QuadBlock::Capacity / 4 && std::has_single_bit(block.count) && m_count > 1 &&
        joinNeighbour(store, positionOf(store, index))) {
        return;
    }
    if (block.bounds.restsOn(box)) {
        const QuadBox bounds = block.unionOfBoxes();
        if (!(bounds == block.bounds)) {
            block.bounds = bounds;
            setBounds(positionOf(store, index), bounds);
        }
    }
}

void QuadList::reshape(QuadStore& store, const Home& home, QuadStore::Place place,
                       const QuadShape& shape) {
    const std::uint32_t index = QuadStore::blockOf(place);
    QuadBlock& block = store.block(index);
    const std::uint32_t position = QuadStore::positionOf(place);
    if (m_count == 1 || block.bounds.encloses(shape.box)) {
        block.setShape(position, shape);
        if (m_count == 1) {
            fit(block, 0, shape.box);
        }
        return;
    }
    QuadRecord record = block.record(position);
    takeOut(store, record.slot, place);
    record.box = shape.box;
    record.bits = static_cast<std::uint8_t>((record.bits & ~QuadBits::Form) |
                                            static_cast<unsigned>(shape.form));
    this->place(store, home, record);
}

void QuadList::dropBlocks(QuadStore& store) {
    for (std::size_t at = 0; at < m_count; ++at) {
        store.releaseBlock(blockAt(at));
    }
    *this = QuadList();
}

bool QuadList::joinNeighbour(QuadStore& store, std::size_t at) {
    constexpr std::uint32_t Most = QuadBlock::Capacity * 3 / 4;
    const std::uint32_t own = store.block(blockAt(at)).count;
    if (at + 1 < m_count && own + store.block(blockAt(at + 1)).count <= Most) {
        moveAll(store, at + 1, at);
        return true;
    }
    if (at > 0 && own + store.block(blockAt(at - 1)).count <= Most) {
        moveAll(store, at, at - 1);
        return true;
    }
    return false;
}

void QuadList::moveAll(QuadStore& store, std::size_t from, std::size_t to) {
    QuadBlock& source = store.block(blockAt(from));
    QuadBlock& target = store.block(blockAt(to));
    while (source.count > 0) {
        store.move(QuadStore::placeOf(blockAt(from), source.end() - 1), blockAt(to));
    }
    target.bounds = target.unionOfBoxes();
    setBounds(to, target.bounds);
    closeAt(store, from);
}

/// Lets the block's bounds take in a box.
void QuadList::fit(QuadBlock& block, std::size_t at, const QuadBox& box) {
    if (!block.bounds.encloses(box)) {
        block.bounds.unite(box);
        setBounds(at, block.bounds);
    }
}

void QuadList::setBounds(std::size_t at, const QuadBox& bounds) {
    column(MinX)[at] = bounds.minX;
    column(MinY)[at] = bounds.minY;
    column(MaxX)[at] = bounds.maxX;
    column(MaxY)[at] = bounds.maxY;
}

/// The last block whose key is not above this one, or the first.
std::size_t QuadList::find(std::uint32_t key) const {
    std::size_t at = 0;
    std::size_t count = m_count;
    while (count > 1) {
        const std::size_t half = count / 2;
        at += keyAt(at + half) <= key ? half : 0;
        count -= half;
    }
    return at;
}

std::size_t QuadList::positionOf(const QuadStore& store, std::uint32_t block) const {
    // Among blocks of one key, it is any.
    std::size_t at = find(store.block(block).key);
    while (blockAt(at) != block) {
        --at;
    }
    return at;
}

void QuadList::reserveOne() {
    if (m_count < m_capacity) {
        return;
    }
    const std::uint32_t capacity = (m_capacity + m_capacity / 2 + Step) / Step * Step;
    std::vector<std::int32_t> wider(capacity * ColumnCount);
    for (std::size_t which = 0; which < ColumnCount; ++which) {
        std::copy_n(column(static_cast<Column>(which)), m_count, wider.data() + which * capacity);
    }
    m_data = std::move(wider);
    m_capacity = capacity;
}

void QuadList::openAt(QuadStore& store, std::size_t at, std::uint32_t node, std::uint32_t key) {
    reserveOne();
    for (std::size_t which = 0; which < ColumnCount; ++which) {
        std::int32_t* const values = column(static_cast<Column>(which));
        std::copy_backward(values + at, values + m_count, values + m_count + 1);
    }
    ++m_count;
    column(Blocks)[at] = static_cast<std::int32_t>(store.acquireBlock(node, key));
    column(Keys)[at] = static_cast<std::int32_t>(key);
    setBounds(at, QuadBox::nothing());
}

void QuadList::closeAt(QuadStore& store, std::size_t at) {
    store.releaseBlock(blockAt(at));
    for (std::size_t which = 0; which < ColumnCount; ++which) {
        std::int32_t* const values = column(static_cast<Column>(which));
        std::copy(values + at + 1, values + m_count, values + at);
    }
    --m_count;
}

bool QuadList::checkInvariants(const QuadStore& store, std::uint32_t node,
                               std::ostream& out) const {
    std::size_t records = 0;
    for (std::size_t at = 0; at < m_count; ++at) {
        const QuadBlock& block = store.block(blockAt(at));
        const QuadBox listed{column(MinX)[at], column(MinY)[at], column(MaxX)[at],
                             column(MaxY)[at]};
        records += block.count;
        const char* fault = nullptr;
        if (block.node != node || block.key != keyAt(at) || !(block.bounds == listed)) {
            fault = "is not what the directory says";
        } else if (at > 0 && keyAt(at) < keyAt(at - 1)) {
            fault = "is out of order";
        } else if (block.count == 0 ||
                   block.count != static_cast<std::uint32_t>(std::popcount(block.taken))) {
            fault = "has an impossible number of records";
        } else if (!block.bounds.encloses(block.unionOfBoxes())) {
            fault = "has bounds that are too small";
        }
        if (fault != nullptr) {
            out << "tree node " << node << ": block " << blockAt(at) << ' ' << fault << '\n';
            return false;
        }
    }
    if (records != m_recordCount) {
        out << "tree node " << node << ": counts " << m_recordCount << " records of " << records
            << '\n';
    }
    return records == m_recordCount;
}

}  // namespace qx::internal
