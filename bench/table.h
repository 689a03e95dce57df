#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace bench {

/// One line of the table. A goal of 0 is none.
struct Row {
    std::string name;
    std::string work;
    double baselinesAtMost = 0;  ///< Our time divided by the baseline's, at the largest size.
    double getoptsAtMost = 0;    ///< Our time divided by getopt_long's.
    double exponentAtMost = 0;   ///< e, where our time grows as size^e.
    double secondsAtMost = 0;    ///< At the largest size.
};

/// Collects the times of all repetitions of benchmarks named "row/contestant/size", and prints what
/// their medians say about the goals.
class Table : public benchmark::ConsoleReporter {
public:
    explicit Table(std::vector<Row> rows) : m_rows(std::move(rows)) {}

    void ReportRuns(std::vector<Run> const& runs) override {
        for (Run const& run : runs) {
            std::string const name = run.run_name.function_name;
            if (run.error_occurred) {
                std::fprintf(stderr, "%s: %.200s\n", name.c_str(), run.error_message.c_str());
                m_failed = true;
            } else if (run.run_type == Run::RT_Iteration) {
                std::size_t const first = name.find('/');
                std::size_t const last = name.rfind('/');
                m_seconds[name.substr(0, first)][name.substr(
                    first + 1, last - first - 1)][std::stol(name.substr(last + 1))]
                    .push_back(run.cpu_accumulated_time / static_cast<double>(run.iterations));
            }
        }
    }

    /// Returns whether every contestant's answers were right; goals may be missed.
    bool print() {
        std::puts("| work | goal | measured | met | other libraries, times ours |");
        std::puts("|---|---|---|---|---|");
        for (Row const& row : m_rows) {
            if (m_seconds[row.name].contains("varo")) {
                printRow(row, m_seconds[row.name]);
            }
        }
        return !m_failed;
    }

private:
    using Times = std::map<long, std::vector<double>>;  ///< By size.

    /// One goal's limit and what was measured, as the texts of two columns.
    struct Verdict {
        void judge(double limit, double measured, char const* format) {
            if (limit != 0) {
                goal += (goal.empty() ? "at most " : ", ") + formatted(format, limit);
                found += (found.empty() ? "" : ", ") + formatted(format, measured);
                met = met && measured <= limit;
            }
        }

        std::string goal;
        std::string found;
        bool met = true;
    };

    static std::string formatted(char const* format, double number) {
        char text[64];
        std::snprintf(text, sizeof text, format, number);
        return text;
    }

    static void printRow(Row const& row, std::map<std::string, Times>& contestants) {
        Times const ours = contestants["varo"];
        Verdict verdict;
        verdict.judge(row.baselinesAtMost, ratio(ours, contestants["baseline"]), "%.2f x baseline");
        verdict.judge(row.getoptsAtMost, ratio(ours, contestants["getopt_long"]),
                      "%.3f x getopt_long");
        verdict.judge(row.exponentAtMost, exponent(ours), "exponent %.2f");
        verdict.judge(row.secondsAtMost, median(ours.rbegin()->second), "%.3f s");
        std::string others;
        for (auto const& [name, times] : contestants) {
            if (name != "varo" && name != "baseline" && !times.empty()) {
                others += (others.empty() ? "" : ", ") + name + " " +
                          formatted("%.1f", ratio(times, ours));
            }
        }
        std::printf("| %s | %s | %s | %s | %s |\n", row.work.c_str(), verdict.goal.c_str(),
                    verdict.found.c_str(), verdict.met ? "yes" : "NO", others.c_str());
    }

    static double median(std::vector<double> numbers) {
        auto const middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
        std::nth_element(numbers.begin(), middle, numbers.end());
        return *middle;
    }

    /// At the largest size that both were timed at.
    static double ratio(Times const& dividend, Times const& divisor) {
        for (auto at = dividend.rbegin(); at != dividend.rend(); ++at) {
            auto const other = divisor.find(at->first);
            if (other != divisor.end()) {
                return median(at->second) / median(other->second);
            }
        }
        return std::nan("");
    }

    /// The slope of the line through the logarithms of sizes and times.
    static double exponent(Times const& times) {
        double n = 0, x = 0, y = 0, xx = 0, xy = 0;
        for (auto const& [size, repetitions] : times) {
            double const logSize = std::log(static_cast<double>(size));
            double const logTime = std::log(median(repetitions));
            n += 1;
            x += logSize;
            y += logTime;
            xx += logSize * logSize;
            xy += logSize * logTime;
        }
        return (n * xy - x * y) / (n * xx - x * x);
    }

    std::vector<Row> m_rows;
    std::map<std::string, std::map<std::string, Times>> m_seconds;
    bool m_failed = false;
};

}  // namespace bench
