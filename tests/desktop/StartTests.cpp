#include "desktop/harness/Desktop.h"
#include "desktop/harness/Scene.h"

#include <gtest/gtest.h>

namespace corvane::desktop {
namespace {

TEST(Start, placeholder) {}

} // namespace
} // namespace corvane::desktop
