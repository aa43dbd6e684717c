// The budget of a call.
#include "platform/step_budget.h"

#include <gtest/gtest.h>

namespace zorvan::test {
namespace {

TEST(StepBudget, IsUsedUpStepByStep) {
    StepBudget budget;
    budget.Renew(10);
    budget.Charge(4);
    budget.Charge(6);
    EXPECT_THROW(budget.Charge(1), std::bad_alloc);
    budget.Charge(0);
}

TEST(StepBudget, TakesNothingThatIsTooMuch) {
    StepBudget budget;
    budget.Renew(10);
    EXPECT_THROW(budget.Charge(11), std::bad_alloc);
    EXPECT_THROW(budget.Charge(UINT64_MAX), std::bad_alloc);
    budget.Charge(10);
}

TEST(StepBudget, IsNoneBeforeItIsGiven) {
    EXPECT_THROW(StepBudget().Charge(1), std::bad_alloc);
}

}  // namespace
}  // namespace zorvan::test
