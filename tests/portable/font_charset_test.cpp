#include "window/font_charset.h"

#include <gtest/gtest.h>

#include "support/table.h"

namespace {

TEST(CharsetOfCodePage, KnowsTheLanguagesOfWindows) {
    for (const Row& row : Table("font_charset")) {
        const auto codePage = static_cast<std::uint32_t>(row.Int(0));
        EXPECT_EQ(CharsetOfCodePage(codePage), row.Int(1)) << row.why;
    }
}

TEST(ParseCodePage, ReadsTheLeadingDigitsOnly) {
    for (const Row& row : Table("code_page")) {
        const std::wstring text(row.Text(0).begin(), row.Text(0).end());
        EXPECT_EQ(ParseCodePage(text.c_str()), row.Big(1)) << row.why;
    }
}

}  // namespace
