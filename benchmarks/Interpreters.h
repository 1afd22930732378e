#ifndef ZEPHYR_BENCHMARKS_INTERPRETERS_H
#define ZEPHYR_BENCHMARKS_INTERPRETERS_H

#include <memory>
#include <string>
#include <vector>

struct Tcl_Interp;
struct lua_State;

namespace zephyr::bench {

/// An embedded Tcl with commands that do nothing.
class TclInterpreter
{
public:
    explicit TclInterpreter(const std::vector<std::string>& commandNames);

    /// Parses and runs a line. \return whether it succeeded.
    bool evaluate(const std::string& line);

private:
    std::unique_ptr<Tcl_Interp, void (*)(Tcl_Interp*)> mInterpreter;
};

/// An embedded Lua with functions that do nothing.
class LuaInterpreter
{
public:
    explicit LuaInterpreter(const std::vector<std::string>& functionNames);

    /// Compiles and runs a line. \return whether it succeeded.
    bool evaluate(const std::string& line);

private:
    std::unique_ptr<lua_State, void (*)(lua_State*)> mState;
};

} // namespace zephyr::bench

#endif
