#include "host/unit_words.h"

#include <gtest/gtest.h>

#include <memory>

#include "base/wide_text.h"

namespace {

/// A record whose table 3, days, is read from `text`.
std::unique_ptr<CLangFile> Days(const WideString& text) {
    auto file = std::make_unique<CLangFile>();
    ParseUnitTable(*file, 3, text.c_str());
    return file;
}

WideString Word(const CLangFile& file, std::uint32_t number) { return UnitWord(file, 3, number); }

TEST(UnitWords, FollowTheRulesOfALanguage) {
    const auto russian = Days(u"дней;1,21,31,41,51,61,71,81,91 день;2-4,22-24,32-34,92-94 дня");
    const std::pair<std::uint32_t, WideString> cases[] = {
        {0, u"дней"},   {1, u"день"},   {2, u"дня"},          {11, u"дней"},
        {101, u"день"}, {1094, u"дня"}, {0xFFFFFFFF, u"дней"}};
    for (const auto& [number, word] : cases) EXPECT_EQ(Word(*russian, number), word) << number;
}

TEST(UnitWords, AFaultKeepsWhatStoodBeforeIt) {
    const struct {
        const char* why;
        WideString text;
        std::uint32_t number;
        WideString word;
        int count;
    } cases[] = {
        {"ranges without a default", u";1 day", 1, u"d", 0},
        {"a list goes on behind a comma", u"x;1,5-7,9 y", 6, u"y", 3},
        {"the last range that fits wins", u"x;0-99 y;5 z", 5, u"z", 2},
        {"a turned range ends the list", u"x;1,5-3 y", 1, u"y", 1},
        {"a number too large ends the list", u"x;1,100 y;2 z", 2, u"z", 2},
        {"also one that 32 bits would take for 5", u"x;1,4294967301 y", 1, u"y", 1},
        {"a missing second number", u"x;1,5- y", 1, u"y", 1},
        {"a letter in the list ends the table", u"x;1 y;2,a z;3 z", 3, u"x", 2},
        {"its numbers have no word, whatever stood before", u"x;1-9 y;2,a z", 2, u"x", 2},
        {"a group without ranges has a word all the same", u"x; y;2 z", 2, u"z", 1},
        {"a list without a word", u"x;1", 1, u"x", 1},
        {"an empty word is a word", u"x;1 ;2 z", 1, u"", 2},
        {"a space in a word stays", u"x y;1 a b", 1, u"a b", 1},
    };
    for (const auto& c : cases) {
        const auto file = Days(c.text);
        EXPECT_EQ(Word(*file, c.number), c.word) << c.why;
        EXPECT_EQ(file->unitCount[3], c.count) << c.why;
    }
}

TEST(UnitWords, EndWhereTheTableIsFull) {
    WideString hundredAndOne = u"x;0";
    for (int i = 1; i <= 100; ++i) hundredAndOne += u",7";
    const auto full = Days(hundredAndOne + u" y;8 z");
    EXPECT_EQ(full->unitCount[3], 100);
    EXPECT_EQ(Word(*full, 0), u"y");
    EXPECT_EQ(Word(*full, 8), u"x") << "no room for a range of a further group";

    const auto longDefault = Days(WideString(5000, u'x') + u";1 y");
    EXPECT_EQ(Word(*longDefault, 1), WideString(1023, u'x'));

    const auto longWord = Days(u"x;1 " + WideString(60000, u'y') + u";2 z");
    EXPECT_EQ(Word(*longWord, 1), WideString(1024 - 2 - 1, u'y')) << "cut, and terminated";
    EXPECT_EQ(Word(*longWord, 2), u"x") << "the last word that fits ends the table";
}

TEST(UnitWords, AreReadAnewWithoutTouchingOtherTables) {
    const auto file = Days(u"old;1 eins;2 zwei");
    ParseUnitTable(*file, 3, u"new;2 two");
    EXPECT_EQ(Word(*file, 1), u"new");
    EXPECT_EQ(Word(*file, 2), u"two");
    ParseUnitTable(*file, 3, u"last;2");
    EXPECT_EQ(Word(*file, 2), u"last") << "no word of an earlier table";
    EXPECT_EQ(WideString(UnitWord(*file, 2, 1)), u"h");
    EXPECT_EQ(WideString(UnitWord(*file, 4, 1)), u"w");
    EXPECT_EQ(UnitWord(*file, 5, 1), nullptr);
}

}  // namespace
