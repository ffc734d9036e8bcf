#include "photos/photo_index.h"

#include <gmock/gmock.h>

#include "support/table.h"

namespace {

using std::string_literals::operator""s;
using testing::ElementsAre;

std::vector<PhotoIndexEntry> Read(const std::string& bytes,
                                  PhotoIndexKind kind = PhotoIndexKind::City) {
    // An exact copy on the heap, so that the sanitizer sees a step over the end.
    const std::vector<char> exact(bytes.begin(), bytes.end());
    PhotoIndexReader reader({exact.data(), exact.size()}, kind);
    std::vector<PhotoIndexEntry> entries;
    for (PhotoIndexEntry entry; reader.Next(entry);) entries.push_back(entry);
    return entries;
}

std::vector<std::int32_t> Numbers(const std::string& bytes) {
    std::vector<std::int32_t> numbers;
    for (const PhotoIndexEntry& entry : Read(bytes)) numbers.push_back(entry.photoNumber);
    return numbers;
}

TEST(PhotoIndex, FindsTheColumnsOfBothKinds) {
    const std::pair<PhotoIndexEntry, WideView> cases[] = {
        {Read("12\tx\ty\tOld harbour\t/12.htm\tmore\n").at(0), u""},
        {Read("12\tLyon\tx\ty\tOld harbour\t/12.htm\t-\r\n", PhotoIndexKind::Country).at(0),
         u"Lyon"}};
    for (const auto& [entry, city] : cases) {
        EXPECT_EQ(entry.photoNumber, 12);
        EXPECT_EQ(entry.city, city);
        EXPECT_EQ(entry.caption, u"Old harbour");
        EXPECT_EQ(entry.pagePath, u"/12.htm");
    }
}

TEST(PhotoIndex, EndsLinesAndSkipsComments) {
    EXPECT_THAT(Numbers("# 1\n;2\n\n\r\n3\n4"), ElementsAre(3, 4)) << "the last needs no end";
    const auto entries = Read("5\ta\tb\tcaption\rjunk\tpath\n6\ta\tb\tlast\0junk"s);
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].caption, u"caption") << "CR ends a line's text";
    EXPECT_EQ(entries[0].pagePath, u"");
    EXPECT_EQ(entries[1].caption, u"last") << "so does a NUL";
    EXPECT_THAT(Numbers("1\n" + std::string(5000, 'x') + "\x1A\n3\n"), ElementsAre(1))
        << "Ctrl-Z ends the file, also in the part of a line that is thrown away";
}

TEST(PhotoIndex, ReadsNumbersOfHostileLength) {
    for (const Row& row : Table("photo_numbers")) {
        const auto numbers = Numbers(row.Text(0) + "\ta\tb\tc\td\n1\n");
        ASSERT_EQ(numbers.size(), row.Int(1) < 0 ? 1U : 2U) << row.why;
        EXPECT_EQ(numbers[0], numbers.size() == 2 ? row.Int(1) : 1) << row.why;
    }
}

TEST(PhotoIndex, ThrowsAwayTheRestOfALongLineBetweenItsCharacters) {
    const std::string start = "1\ta\tb\t";
    const std::string fits(4095 - start.size(), 'c');
    // The 4096th byte begins what could pose as a line of its own.
    const auto entries = Read(start + fits + "99\tx\ty\tforged\t/evil\n2\n");
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0].caption, WidenAscii(fits));
    EXPECT_EQ(entries[0].pagePath, u"");
    EXPECT_EQ(entries[1].photoNumber, 2);
    for (std::size_t halves = 0; halves < 3; ++halves) {
        // Euro signs of three bytes; the cut falls on each of the three.
        std::string text = start + std::string(halves, 'x');
        while (text.size() < 4200) text += "\xE2\x82\xAC";
        const WideString caption = Read(text).at(0).caption;
        EXPECT_EQ(caption.back(), u'\u20AC') << halves;
        EXPECT_EQ(caption.size(), halves + (4095 - start.size() - halves) / 3) << halves;
    }
    // Not UTF-8 at all: every byte up to the limit stays.
    EXPECT_EQ(Read(start + std::string(5000, '\x84')).at(0).caption.size(), fits.size());
}

TEST(PhotoIndex, TellsUtf8FromAnsiLineByLine) {
    const std::string mark = "\xEF\xBB\xBF";
    const auto entries =
        Read(mark + "1\t\t\tCaf\xC3\xA9\n2\t\t\tCaf\xE9\n" + mark + "3\t\t\tsecond mark\n");
    ASSERT_EQ(entries.size(), 2U) << "a mark is one only at the start of the file";
    EXPECT_EQ(entries[0].caption, u"Caf\u00E9");
    EXPECT_EQ(entries[1].caption, u"Caf\u00E9") << "in the system's code page";
}

}  // namespace
