#include "window/local_strings.h"

#include <gtest/gtest.h>

#include <limits>

#include "base/wide_text.h"

namespace {

TEST(LocalStrings, KeepACopyForEveryNumber) {
    LocalStrings strings;
    const WideString fallback = u"fallback";
    EXPECT_EQ(strings.Get(2, fallback.c_str()), fallback.c_str());
    WideString hosts = u"short-lived text that is too long to lie inside the string itself";
    const WideString before = hosts;
    const std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
    for (const std::int32_t id : {lowest, -1, 0, 1}) strings.Set(id, hosts.c_str());
    hosts.assign(hosts.size(), u'#');
    EXPECT_EQ(strings.Get(lowest, nullptr), before);
    EXPECT_EQ(strings.Get(2, nullptr), nullptr) << "another number";
    strings.Set(1, nullptr);
    strings.Set(1, strings.Get(1, nullptr) + 2);
    EXPECT_EQ(strings.Get(1, nullptr), before.substr(2))
        << "null changes nothing; its own text may";
    strings.Set(1, u"");
    EXPECT_EQ(strings.Get(1, fallback.c_str()), WideString()) << "an empty text is a text";
}

}  // namespace
