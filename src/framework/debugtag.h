#pragma once

#include "dbg.h"

/**
 * The names under which one source file reports, and the cached answer whether its debug output is
 * wanted. Each source file that constructs counted objects or reports assertions holds one.
 */
class DebugTag
{
public:
    /**
     * @param subModule   the class that the file holds
     * @param sourcePath  path that assertions name; may be null in a file that reports none
     */
    constexpr explicit DebugTag(char const* subModule, char const* sourcePath = nullptr)
        : s_tagSubMod(subModule)
        , s_szFilename(sourcePath)
    {
    }

    /// Asks once whether the sub-module's debug output is wanted, and remembers the answer.
    void ask()
    {
        if (dbg_bSubModActive == notAskedYet)
            dbg_bSubModActive = dbg_SubModActive(s_tagModCheck, s_tagSubMod);
    }

    /// Reports a failed assertion and returns.
    void assertionFailed(char const* function, int line, char const* message)
    {
        ask();
        dbg_Assert(s_tagModCheck, s_tagSubMod, 0, function, s_szFilename, line, message);
    }

private:
    static constexpr char const* s_tagModCheck = "zelplot";
    static constexpr int notAskedYet = -1;

    char const* s_tagSubMod;
    char const* s_szFilename;
    int dbg_bSubModActive = notAskedYet;
};
