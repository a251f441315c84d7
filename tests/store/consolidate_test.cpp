// The repair pass over amplitudes and its question.
#include "store/consolidate.h"

#include "tests/support/console.h"
#include "tests/support/fixture.h"

#include <cmath>

namespace {

class Consolidate : public StoreTest {};

const char *const question = "Is amp in dBs? (y/n)\n>\t";
const char *const again = "//\tyes or no?\n>\t";

void fill_amps(const std::vector<std::vector<float>> &amps) {
    std::vector<Partial> content;
    for (const std::vector<float> &row : amps) {
        Partial partial;
        for (float amp : row) {
            partial.push_back({static_cast<float>(partial.size()), 100.0f, amp});
        }
        content.push_back(partial);
    }
    fill_store(content);
}

std::vector<float> amps_of(int32_t i) {
    std::vector<float> result;
    for (int32_t j = 0; j < npoints[i]; ++j) {
        result.push_back(parray[i][j].amp);
    }
    return result;
}

std::string run(const std::string &reply) {
    return conversation(reply, [] { consolidate(parray, npoints, partials); });
}

TEST_F(Consolidate, QuestionAlone) {
    int32_t result = -5;
    EXPECT_EQ(conversation("y\n", [&] { result = dialog__5(); }), question);
    EXPECT_EQ(result, 1);
    EXPECT_EQ(conversation("n\n", [&] { result = dialog__5(); }), question);
    EXPECT_EQ(result, 0);
}

TEST_F(Consolidate, TheFirstLetterCounts) {
    int32_t result = -5;
    conversation("nay\n", [&] { result = dialog__5(); });
    EXPECT_EQ(result, 0);
}

TEST_F(Consolidate, AsksAgainUntilYesOrNo) {
    int32_t result = -5;
    EXPECT_EQ(conversation("maybe Y\nyes\n", [&] { result = dialog__5(); }),
              std::string(question) + again + again);
    EXPECT_EQ(result, 1);
}

TEST_F(Consolidate, EndOfInputChangesNothing) {
    fill_amps({{-50, -50, -96, -60, -10, -5}});
    EXPECT_EQ(run("hm\n"), std::string(question) + again);
    EXPECT_EQ(amps_of(0), (std::vector<float>{-50, -50, -96, -60, -10, -5}));
}

TEST_F(Consolidate, OneLostPointBecomesTheMeanOfItsNeighbours) {
    fill_amps({{-50, -52, -96, -61, -50}});
    EXPECT_EQ(run("y\n"), std::string(question) + ",\n");
    EXPECT_EQ(amps_of(0), (std::vector<float>{-50, -52, -56.5f, -61, -50}));
}

TEST_F(Consolidate, EveryPlaceIsLookedAt) {
    fill_amps({{-50, -50, -50, -52, -96, -61, -50, -96, -97, -50}});
    EXPECT_EQ(run("y\n"), std::string(question) + ",*\n");
    EXPECT_EQ(amps_of(0),
              (std::vector<float>{-50, -50, -50, -52, -56.5f, -61, -50, -50, -50, -50}));
}

TEST_F(Consolidate, TwoLostPointsTakeTheLevelBeforeThem) {
    fill_amps({{-50, -52, -96, -97, -50}});
    EXPECT_EQ(run("y\n"), std::string(question) + "*\n");
    EXPECT_EQ(amps_of(0), (std::vector<float>{-50, -52, -52, -52, -50}));
}

TEST_F(Consolidate, ALostLastPointAloneStays) {
    fill_amps({{-50, -52, -93, -97, -50}});
    EXPECT_EQ(run("y\n"), std::string(question) + "\n");
    EXPECT_EQ(amps_of(0), (std::vector<float>{-50, -52, -93, -97, -50}));
}

TEST_F(Consolidate, TheLimitsThemselvesAreNotPassed) {
    fill_amps({{-50, -52, -95, -61, -50}, {-50, -90, -96, -61, -50}, {-50, -52, -96, -90, -50}});
    EXPECT_EQ(run("y\n"), std::string(question) + "\n");
    EXPECT_EQ(amps_of(0)[2], -95.0f);
    EXPECT_EQ(amps_of(1)[2], -96.0f);
    EXPECT_EQ(amps_of(2)[2], -96.0f);
}

TEST_F(Consolidate, ThreePointsAreLeftAlone) {
    fill_amps({{-52, -96, -61}});
    EXPECT_EQ(run("y\n"), std::string(question) + "\n");
    EXPECT_EQ(amps_of(0), (std::vector<float>{-52, -96, -61}));
}

TEST_F(Consolidate, ALoudLastButOnePointLosesFiftySix) {
    fill_amps({{-50, -50, -19.5f, -50}, {-50, -50, -20, -50}, {-5, -50}, {-3}});
    run("y\n");
    EXPECT_EQ(amps_of(0)[2], -75.5f);
    EXPECT_EQ(amps_of(1)[2], -20.0f);
    EXPECT_EQ(amps_of(2)[0], -61.0f);
    EXPECT_EQ(amps_of(3)[0], -3.0f);
}

TEST_F(Consolidate, LinearDataHaveNoSuchLoss) {
    fill_amps({{0.5f, 0.5f, 0.5f, 0.5f}});
    EXPECT_EQ(run("n\n"), std::string(question) + "\n");
    EXPECT_EQ(amps_of(0), (std::vector<float>{0.5f, 0.5f, 0.5f, 0.5f}));
}

TEST_F(Consolidate, LinearSecondPointBecomesTheGeometricMean) {
    fill_amps({{0.5f, -0.1f, 0.25f, 0.5f}});
    EXPECT_EQ(run("n\n"), std::string(question) + "\"\n");
    EXPECT_EQ(amps_of(0)[1], sqrtf(0.5f * 0.25f));
}

TEST_F(Consolidate, LinearFirstPointTakesTheSecond) {
    fill_amps({{-0.5f, 0.125f, 0.25f, 0.5f}});
    EXPECT_EQ(run("n\n"), std::string(question) + "\"\n");
    EXPECT_EQ(amps_of(0)[0], 0.125f);
}

TEST_F(Consolidate, TheHeadRulesHoldAtTheHeadAlone) {
    fill_amps({{0.0f, -0.1f, 0.5f, 0.5f, 0.5f}});
    EXPECT_EQ(run("n\n"), std::string(question) + "\n");
    EXPECT_EQ(amps_of(0)[1], -0.1f);
}

TEST_F(Consolidate, LinearInnerPointBecomesTheGeometricMean) {
    fill_amps({{0.5f, 0.3f, -0.1f, 0.7f}});
    EXPECT_EQ(run("n\n"), std::string(question) + ",\n");
    EXPECT_EQ(amps_of(0)[2], sqrtf(0.7f * 0.3f));
}

TEST_F(Consolidate, TwoNegativePointsAreContinuedFromTheOnesBefore) {
    fill_amps({{0.5f, 0.25f, -0.1f, -0.2f}});
    EXPECT_EQ(run("n\n"), std::string(question) + ";\n");
    const float a2 = static_cast<float>(0.25 * 0.25 * 3.16 / 0.5);
    const float a3 = static_cast<float>(static_cast<double>(a2) * a2 * 3.16 / 0.25);
    EXPECT_FLOAT_EQ(amps_of(0)[2], a2);
    EXPECT_FLOAT_EQ(amps_of(0)[3], a3);
}

TEST_F(Consolidate, ANegativeLastButOnePointBecomesZero) {
    fill_amps({{0.5f, 0.25f, 0.1f, -0.2f, 0.0f}});
    EXPECT_EQ(run("n\n"), std::string(question) + ":\n");
    EXPECT_EQ(amps_of(0)[3], 0.0f);
}

TEST_F(Consolidate, PointsOfZeroBeforeItAreNotNegative) {
    fill_amps({{0.0f, 0.0f, 0.0f, -0.2f, 0.0f}});
    EXPECT_EQ(run("n\n"), std::string(question) + ":\n");
    EXPECT_EQ(amps_of(0)[3], 0.0f);
}

TEST_F(Consolidate, ANegativePointElsewhereIsNotZeroed) {
    fill_amps({{0.5f, 0.25f, 0.1f, -0.2f}, {0.5f, 0.25f, 0.1f, -0.2f, 0.0f, 0.0f}});
    EXPECT_EQ(run("n\n"), std::string(question) + "\n");
    EXPECT_EQ(amps_of(0)[3], -0.2f);
    EXPECT_EQ(amps_of(1)[3], -0.2f);
}

TEST_F(Consolidate, OnlyTheFirstPartialsAreMended) {
    fill_amps({{-50, -52, -96, -61}, {-50, -52, -96, -61, -10, -50}});
    conversation("y", [] { consolidate(parray, npoints, 1); });
    EXPECT_EQ(amps_of(0)[2], -56.5f);
    EXPECT_EQ(amps_of(1)[2], -96.0f);
    EXPECT_EQ(amps_of(1)[4], -10.0f);
}

} // namespace
