#pragma once
// Tables of cases in tests/data/tables: a case a line, its cells behind tabs, the first of them the
// reason why it is there; '#' begins a comment.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

struct Row {
    std::string why;
    std::vector<std::string> cells;

    const std::string& Text(std::size_t i) const { return cells.at(i); }
    int Int(std::size_t i) const { return std::stoi(cells.at(i)); }
    std::uint64_t Big(std::size_t i) const { return std::stoull(cells.at(i)); }
};

inline std::vector<Row> Table(const std::string& name) {
    std::ifstream file(HORIVO_TEST_DATA "/tables/" + name + ".tsv");
    std::vector<Row> rows;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#')) continue;
        std::istringstream cells(line + '\t');
        Row& row = rows.emplace_back();
        std::getline(cells, row.why, '\t');
        for (std::string cell; std::getline(cells, cell, '\t');) row.cells.push_back(cell);
    }
    EXPECT_FALSE(rows.empty()) << "no table " << name;
    return rows;
}
