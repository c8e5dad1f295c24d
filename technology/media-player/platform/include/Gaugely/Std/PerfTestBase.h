/// @file
/// Base class of tests whose performance is measured. The vehicle's own header replaces this one there.
#pragma once

#include <gtest/gtest.h>

namespace Gaugely
{
namespace Std
{

class PerfTestBase : public testing::Test
{
};

} // namespace Std
} // namespace Gaugely
