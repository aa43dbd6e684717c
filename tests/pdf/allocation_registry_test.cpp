// The block store against a model of it, and its corners.
#include "pdf/allocation_registry.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace zorvan::test {
namespace {

using Handle = AllocationRegistry::Handle;

bool IsFilledWith(const std::byte* bytes, std::size_t size, std::byte value) {
    return std::all_of(bytes, bytes + size, [value](std::byte byte) { return byte == value; });
}

/// What the model knows of a block in use.
struct KnownBlock {
    Handle handle;
    std::byte* address;
    std::size_t size;
    std::byte filling;
};

/// Does the same to the registry and to a plain list of blocks.
class Model {
public:
    explicit Model(unsigned seed) : random_(seed) {}

    void Step() {
        const std::size_t choice = random_() % 1000;
        if (choice == 0) {
            ClearAll();
        } else if (choice < 550 || blocks_.empty()) {
            Allocate();
        } else {
            ReleaseOne();
        }
        ASSERT_EQ(registry_.LiveBlocks(), blocks_.size());
    }

    void CheckAll() const {
        for (const KnownBlock& block : blocks_) {
            Check(block);
        }
    }

private:
    std::size_t RandomSize() {
        switch (random_() % 8) {
            case 0:
                return random_() % 4096;
            case 1:
                return random_() % 40 == 0 ? 100000 + random_() % 200000 : random_() % 20000;
            default:
                return random_() % 100;
        }
    }

    void Allocate() {
        const std::size_t size = RandomSize();
        const Handle handle = registry_.Allocate(size);
        ASSERT_NE(handle, 0U);
        std::byte* address = registry_.Address(handle);
        ASSERT_NE(address, nullptr);
        ASSERT_EQ(reinterpret_cast<std::uintptr_t>(address) % 8, 0U);
        ASSERT_TRUE(IsFilledWith(address, size, std::byte{0}));
        const auto filling = static_cast<std::byte>(1 + random_() % 255);
        std::fill_n(address, size, filling);
        blocks_.push_back({handle, address, size, filling});
    }

    void ReleaseOne() {
        std::swap(blocks_[random_() % blocks_.size()], blocks_.back());
        const KnownBlock block = blocks_.back();
        Check(block);
        blocks_.pop_back();
        registry_.Release(block.handle);
        ASSERT_EQ(registry_.Address(block.handle), nullptr);
        registry_.Release(block.handle);  // once more, which must change nothing
    }

    void ClearAll() {
        registry_.Clear();
        for (const KnownBlock& block : blocks_) {
            ASSERT_EQ(registry_.Address(block.handle), nullptr);
        }
        blocks_.clear();
    }

    void Check(const KnownBlock& block) const {
        ASSERT_EQ(registry_.Address(block.handle), block.address);
        ASSERT_TRUE(IsFilledWith(block.address, block.size, block.filling));
    }

    AllocationRegistry registry_;
    std::vector<KnownBlock> blocks_;
    std::mt19937 random_;
};

TEST(AllocationRegistry, AgreesWithAModelOverRandomSteps) {
    for (unsigned seed = 1; seed <= 4; ++seed) {
        Model model(seed);
        for (int step = 0; step < 20000; ++step) {
            model.Step();
            if (step % 1000 == 0) {
                model.CheckAll();
            }
            ASSERT_FALSE(::testing::Test::HasFatalFailure()) << "seed " << seed << " step " << step;
        }
        model.CheckAll();
    }
}

TEST(AllocationRegistry, KnowsNoBlockUnderZeroAndStrangeHandles) {
    AllocationRegistry registry;
    for (const Handle handle : {0U, 1U, 0xFFFFU, 0x10000U, 0x12345678U, 0xFFFFFFFFU}) {
        EXPECT_EQ(registry.Address(handle), nullptr) << handle;
        registry.Release(handle);
    }
    EXPECT_EQ(registry.LiveBlocks(), 0U);
}

TEST(AllocationRegistry, KeepsABlockWhereItIsWhileOthersComeAndGo) {
    AllocationRegistry registry;
    const Handle kept = registry.Allocate(8);
    const std::byte* address = registry.Address(kept);
    for (int i = 0; i < 200000; ++i) {
        static_cast<void>(registry.Allocate(16));
    }
    EXPECT_EQ(registry.Address(kept), address);
    EXPECT_EQ(registry.LiveBlocks(), 200001U);
}

TEST(AllocationRegistry, GivesZeroedMemoryAgainAfterARelease) {
    AllocationRegistry registry;
    for (const std::size_t size : {std::size_t{24}, std::size_t{3000}, std::size_t{500000}}) {
        const Handle first = registry.Allocate(size);
        std::fill_n(registry.Address(first), size, std::byte{0xAB});
        registry.Release(first);
        const Handle second = registry.Allocate(size);
        EXPECT_EQ(second, first) << "the room is used again";
        EXPECT_TRUE(IsFilledWith(registry.Address(second), size, std::byte{0}));
    }
}

TEST(AllocationRegistry, HoldsBlocksAroundEverySizeAtWhichItChangesItsWays) {
    AllocationRegistry registry;
    std::vector<KnownBlock> blocks;
    for (std::size_t size = 1; size <= std::size_t{1} << 21; size *= 2) {
        for (const std::size_t near : {size - 1, size, size + 1, size + 15, size + 17}) {
            const Handle handle = registry.Allocate(near);
            const auto filling = static_cast<std::byte>(blocks.size() % 255 + 1);
            std::fill_n(registry.Address(handle), near, filling);
            blocks.push_back({handle, registry.Address(handle), near, filling});
        }
    }
    for (const KnownBlock& block : blocks) {
        EXPECT_TRUE(IsFilledWith(registry.Address(block.handle), block.size, block.filling)) << block.size;
    }
}

TEST(AllocationRegistry, GivesTheHandlesOfReleasedLargeBlocksOutAgain) {
    AllocationRegistry registry;
    // More in all than there can be chunks at once.
    for (int i = 0; i < 70000; ++i) {
        registry.Release(registry.Allocate(131100));
    }
    EXPECT_EQ(registry.LiveBlocks(), 0U);
}

TEST(AllocationRegistry, RefusesASizeThatNoHandleCouldStandFor) {
    AllocationRegistry registry;
    EXPECT_THROW(static_cast<void>(registry.Allocate(std::size_t{UINT32_MAX / 2} + 1)), std::bad_alloc);
    EXPECT_EQ(registry.LiveBlocks(), 0U);
    EXPECT_NE(registry.Address(registry.Allocate(8)), nullptr);
}

TEST(AllocationRegistry, StartsAfreshAfterClearing) {
    AllocationRegistry registry;
    const Handle stale = registry.Allocate(300000);
    registry.Clear();
    EXPECT_EQ(registry.Address(stale), nullptr);
    registry.Release(stale);
    const Handle fresh = registry.Allocate(10);
    EXPECT_NE(registry.Address(fresh), nullptr);
    EXPECT_EQ(registry.LiveBlocks(), 1U);
}

TEST(AllocationRegistry, KeepsTwoWordsBesideABlock) {
    AllocationRegistry registry;
    const Handle handle = registry.Allocate(8);
    registry.SetLink(handle, 77, 12);
    EXPECT_EQ(registry.Link(handle), 77U);
    EXPECT_EQ(registry.Type(handle), 12U);
    EXPECT_TRUE(IsFilledWith(registry.Address(handle), 8, std::byte{0}));
}

}  // namespace
}  // namespace zorvan::test
