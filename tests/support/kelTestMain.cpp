#include "kelChildProcess.h"

#include <gtest/gtest.h>

// The main of suites that run scenarios in child processes: a child runs its scenario only.
int main(int argc, char** argv) {
    int const childStatus = kelRunChildScenarioIfAsked(argc, argv);
    if (childStatus >= 0) {
        return childStatus;
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
