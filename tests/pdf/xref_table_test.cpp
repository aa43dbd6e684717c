// The table alone: both parts and their rules.
#include "pdf/xref_table.h"

#include <gtest/gtest.h>

namespace zorvan::test {
namespace {

TEST(XrefTable, KeepsTheFirstEntryForAnObjectInBothParts) {
    XrefTable table;
    table.SetSize(10, 100);
    table.Add(3, 0, 111);
    table.Add(3, 0, 222);
    table.Add(30, 0, 333);
    table.Add(30, 0, 444);
    EXPECT_EQ(table.Lookup(3, 0), 111U);
    EXPECT_EQ(table.Lookup(30, 0), 333U);
}

TEST(XrefTable, TellsAFreePlaceOfTheDirectPartFromAnAbsentObject) {
    XrefTable table;
    table.SetSize(10, 100);
    table.Add(3, 0, 111);
    EXPECT_EQ(table.Lookup(2, 0), XrefTable::kNoOffset);
    EXPECT_EQ(table.Lookup(10, 0), XrefTable::kNoOffset);
    EXPECT_EQ(table.Lookup(11, 0), 0U);
    EXPECT_EQ(table.Lookup(0, 0), 0U);
    EXPECT_EQ(table.Lookup(3, 1), 0U);
}

TEST(XrefTable, KeepsOtherGenerationsApart) {
    XrefTable table;
    table.SetSize(10, 100);
    table.Add(3, 1, 111);
    table.Add(3, 65535, 222);
    EXPECT_EQ(table.Lookup(3, 0), XrefTable::kNoOffset);
    EXPECT_EQ(table.Lookup(3, 1), 111U);
    EXPECT_EQ(table.Lookup(3, 65535), 222U);
}

TEST(XrefTable, HasNoDirectPartUntilItIsGivenASize) {
    XrefTable table;
    table.Add(1, 0, 111);
    EXPECT_EQ(table.Lookup(1, 0), 111U);
    EXPECT_EQ(table.Lookup(2, 0), 0U);
}

TEST(XrefTable, TakesASizeForANumberAndNotForAnAmountOfMemory) {
    XrefTable table;
    table.SetSize(0xFFFFFFFF, 3);
    table.Add(2, 0, 111);
    table.Add(0xFFFFFFFF, 0, 222);
    table.Add(4000000000U, 0, 333);
    table.Add(4000000000U, 0, 444);
    EXPECT_EQ(table.Lookup(2, 0), 111U);
    EXPECT_EQ(table.Lookup(3, 0), XrefTable::kNoOffset);
    EXPECT_EQ(table.Lookup(0xFFFFFFFF, 0), 222U);
    EXPECT_EQ(table.Lookup(4000000000U, 0), 333U);
    EXPECT_EQ(table.Lookup(4000000001U, 0), XrefTable::kNoOffset);
}

TEST(XrefTable, KeepsAnEntryForObjectZeroOutsideTheDirectPart) {
    XrefTable table;
    table.SetSize(10, 100);
    table.Add(0, 0, 111);
    EXPECT_EQ(table.Lookup(0, 0), 111U);
    EXPECT_EQ(table.Lookup(1, 0), XrefTable::kNoOffset);
}

}  // namespace
}  // namespace zorvan::test
