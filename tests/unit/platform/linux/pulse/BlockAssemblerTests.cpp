#include "platform/linux/pulse/BlockAssembler.h"

#include <numeric>
#include <vector>

#include <gtest/gtest.h>

using namespace quorvin;

namespace {

class BlockAssemblerTest : public ::testing::Test {
protected:
    /// The next `count` samples of 1, 2, 3 and so on.
    std::vector<float> next(std::size_t count) {
        std::vector<float> samples(count);
        std::iota(samples.begin(), samples.end(), m_next);
        m_next += static_cast<float>(count);
        return samples;
    }

    std::vector<std::vector<float>> blocks;
    BlockAssembler assembler{4, [this](std::span<const float> block) {
                                 blocks.emplace_back(block.begin(), block.end());
                             }};

private:
    float m_next = 1;
};

using Blocks = std::vector<std::vector<float>>;

} // namespace

TEST_F(BlockAssemblerTest, KeepsWhatIsLessThanABlock) {
    assembler.append(next(3));
    EXPECT_TRUE(blocks.empty());
    assembler.append(next(1));
    EXPECT_EQ(blocks, (Blocks{{1, 2, 3, 4}}));
}

TEST_F(BlockAssemblerTest, CutsALargePieceAndCarriesItsRest) {
    assembler.append(next(10));
    EXPECT_EQ(blocks, (Blocks{{1, 2, 3, 4}, {5, 6, 7, 8}}));
    assembler.append(next(3));
    EXPECT_EQ(blocks.back(), (std::vector<float>{9, 10, 11, 12}));
    assembler.append(next(3));
    EXPECT_EQ(blocks.back(), (std::vector<float>{13, 14, 15, 16}));
    EXPECT_EQ(blocks.size(), 4U);
}

TEST_F(BlockAssemblerTest, HandsOnAnExactBlockAtOnce) {
    assembler.append(next(4));
    EXPECT_EQ(blocks, (Blocks{{1, 2, 3, 4}}));
    assembler.append({});
    EXPECT_EQ(blocks.size(), 1U);
}

TEST_F(BlockAssemblerTest, SilenceTakesThePlaceOfWhatIsMissing) {
    assembler.append(next(6));
    assembler.appendSilence(7);
    assembler.append(next(3));
    EXPECT_EQ(blocks, (Blocks{{1, 2, 3, 4}, {5, 6, 0, 0}, {0, 0, 0, 0}, {0, 7, 8, 9}}));
}

TEST_F(BlockAssemblerTest, TheOrderSurvivesPiecesOfEverySize) {
    std::size_t given = 0;
    for (std::size_t size = 0; size < 50; ++size) {
        assembler.append(next(size));
        given += size;
    }
    ASSERT_EQ(blocks.size(), given / 4);
    float expected = 1;
    for (const auto& block : blocks) {
        ASSERT_EQ(block.size(), 4U);
        for (const float sample : block) {
            ASSERT_EQ(sample, expected++);
        }
    }
}
