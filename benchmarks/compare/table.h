#pragma once

#include "measure.h"
#include <optional>
#include <string>
#include <vector>

/// The figures in Markdown, so that they can be pasted.
class Table
{
public:
    struct Row
    {
        std::string work;
        std::string points;
        Pair figures;
        std::string unit;
        std::optional<double> limit; ///< that the ratio is not to exceed
    };

    void add(Row row) { rows.push_back(std::move(row)); }
    void print(std::string const& ours, std::string const& theirs) const;

private:
    std::vector<Row> rows;
};
