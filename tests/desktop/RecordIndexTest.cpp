#include "RecordIndex.h"

#include <gtest/gtest.h>

#include <random>

namespace {

TEST(RecordIndex, GivesBackWhatWasAppended)
{
    std::mt19937_64 random(7);
    for (const int runLength : {1, 3, 4095, 4096, 4097, 100000}) {
        RecordIndex index;
        std::vector<qint64> expected;
        qint64 id = 0;
        while (expected.size() < 30000) {
            id = static_cast<qint64>(random() >> 2) - (qint64(1) << 60);
            for (int i = 0; i < runLength && expected.size() < 30000; ++i)
                expected.push_back(id++);
        }
        for (const qint64 value : expected)
            index.append(value);
        ASSERT_EQ(index.size(), 30000);
        for (size_t row = 0; row < expected.size(); ++row)
            ASSERT_EQ(index.at(static_cast<qint64>(row)), expected[row]) << "row " << row << ", runs of " << runLength;
    }
}

TEST(RecordIndex, ConsecutiveRecordsCostNearlyNothing)
{
    RecordIndex consecutive;
    RecordIndex scattered;
    for (qint64 i = 0; i < 1'000'000; ++i) {
        consecutive.append(i + 5);
        scattered.append(i * 3);
    }
    EXPECT_LT(consecutive.memory(), 50'000);
    EXPECT_LT(scattered.memory(), 9'000'000);
    consecutive.clear();
    EXPECT_EQ(consecutive.size(), 0);
}

} // namespace
