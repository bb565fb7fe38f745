#pragma once

/// Holds the first edition's data files to the computed sky, the festival rules and dated sources.

#include "panchanga/Panchanga.h"
#include "tools/RuleFiles.h"
#include "tools/YearLists.h"

#include <map>
#include <string>
#include <vector>

namespace dinmala::tools {

/// A festival on a day that an independent dated source gives: a line of almanac/rules/dated.txt.
struct DatedFact {
    std::chrono::sys_days day;
    int id = 0;
    std::string source;
    std::string disagreement;  ///< why the list has another day; empty when it agrees
};

/// All that the check reads.
struct AlmanacFiles {
    std::map<int, std::vector<Token>> tithis, events;  ///< by BS year
    std::map<int, std::string> tithiText, eventText;   ///< the same files, as they are
    Names tithiNames, eventNames;
    Dated important;
    std::vector<DatedFact> dated;
};

/// What the check found. Only `passed()` is the verdict; the counts are to be printed.
struct AlmanacReport {
    int tithiTokens = 0;              ///< all of them
    int tithiAgree = 0;               ///< of those, borne out by the sky
    std::vector<std::string> untrue;  ///< tithi tokens that stand although the sky does not bear them out
    int eventTokens = 0;
    std::map<std::string, int> byGrade;      ///< event tokens that agree with their rule: "dated", "sure", "usual"; and
                                             ///< those that stand without a rule, "stated"
    std::vector<std::string> usual;          ///< the event tokens of that grade
    int datedAgree = 0;                      ///< dated sources whose day the lists have
    std::vector<std::string> datedElse;      ///< those that differ for a reason that is given
    std::vector<std::string> datedUnlisted;  ///< those whose festival the year does not list; the rule gives the day
    std::vector<std::string> failures;       ///< everything that is wrong

    [[nodiscard]] bool passed() const { return failures.empty(); }
    [[nodiscard]] std::string text() const;  ///< the whole report, to print
};

/// Reads the almanac's data files under `root`, the top of the source tree. Throws FileError.
[[nodiscard]] AlmanacFiles readAlmanac(const std::string& root);

/// Holds `files` to everything.
[[nodiscard]] AlmanacReport checkAlmanac(const AlmanacFiles& files, const AlmanacRules& rules,
                                         const Panchanga& panchanga);

}  // namespace dinmala::tools
