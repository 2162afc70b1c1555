// Every case of tests/data/runs played as a test of its own, named after its
// file and case.
#include "support/RunCases.h"
#include "support/TestSupport.h"

#include <gtest/gtest.h>

using namespace kelvary::test;

namespace {

class Runs : public ::testing::TestWithParam<RunCase> {};

TEST_P(Runs, Play) { playRunCase(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Cases, Runs, ::testing::ValuesIn(loadRunCases(testDataDir() + QStringLiteral("/runs"))),
                         [](const ::testing::TestParamInfo<RunCase>& info) { return info.param.name.toStdString(); });

}  // namespace
