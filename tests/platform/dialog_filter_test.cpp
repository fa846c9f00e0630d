#include "platform/dialog_filter.h"

#include <gtest/gtest.h>

namespace corvina {
namespace {

TEST(DialogFilter, BarsBecomeNulsAndTheListEndsTwice) {
  EXPECT_EQ(DialogFilter(L"Pages (*.html)|*.html|All|*.*"),
            std::wstring(L"Pages (*.html)\0*.html\0All\0*.*\0\0", 31));
  EXPECT_EQ(DialogFilter(L""), std::wstring(L"\0\0", 2));
}

}  // namespace
}  // namespace corvina
