// What the benchmarks of the views share beside the scene: quantiles, the table that compares two
// boards, and a program without a display.
#pragma once

#include <QGuiApplication>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <vector>

namespace kelpa::bench {

/// The value that the given part, from 0 to 1, of all values does not exceed.
inline double quantile(std::vector<double> values, double part)
{
    std::ranges::sort(values);
    return values.at(static_cast<std::size_t>(part * static_cast<double>(values.size() - 1)));
}

constexpr double median = 0.5;

/// `left` and `right` are the names of the boards.
inline void printTableHead(const char* left, const char* right)
{
    std::printf("| %-44s | %9s | %9s | ratio |\n", "", left, right);
    std::printf(
        "|----------------------------------------------|----------:|----------:|------:|\n");
}

inline void printTableRow(const char* name, double left, double right)
{
    std::printf("| %-44s | %9.2f | %9.2f | %5.2f |\n", name, left, right, right / left);
}

/// Calls `run` in a program that draws in memory; returns what main is to return.
template <class Run>
int runOffscreen(int argc, char** argv, const Run& run)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    try {
        return run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}

} // namespace kelpa::bench
