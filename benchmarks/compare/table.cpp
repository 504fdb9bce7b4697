#include "table.h"

#include <cstdio>

void Table::print(std::string const& ours, std::string const& theirs) const
{
    std::printf("| work | points | unit | %s | %s | ratio | floor | |\n", ours.c_str(),
                theirs.c_str());
    std::printf("|---|--:|---|--:|--:|--:|--:|---|\n");
    for (Row const& row : rows) {
        std::printf("| %s | %s | %s | %.4g | %.4g | %.3g |", row.work.c_str(), row.points.c_str(),
                    row.unit.c_str(), row.figures.ours, row.figures.theirs, row.figures.ratio());
        if (row.limit)
            std::printf(" %g | %s |\n", *row.limit,
                        row.figures.ratio() <= *row.limit ? "ok" : "above");
        else
            std::printf(" | |\n");
    }
}
