#include "Interpreters.h"

#include <lua.hpp>
#include <tcl.h>

namespace zephyr::bench {

namespace {

int doNothingInTcl(ClientData, Tcl_Interp*, int, Tcl_Obj* const*) { return TCL_OK; }

int doNothingInLua(lua_State*) { return 0; }

} // namespace

TclInterpreter::TclInterpreter(const std::vector<std::string>& commandNames)
    : mInterpreter(Tcl_CreateInterp(), Tcl_DeleteInterp)
{
    for (const std::string& name : commandNames) {
        Tcl_CreateObjCommand(mInterpreter.get(), name.c_str(), doNothingInTcl, nullptr, nullptr);
    }
}

bool TclInterpreter::evaluate(const std::string& line)
{
    return Tcl_EvalEx(mInterpreter.get(), line.c_str(), static_cast<int>(line.size()), 0) == TCL_OK;
}

LuaInterpreter::LuaInterpreter(const std::vector<std::string>& functionNames)
    : mState(luaL_newstate(), lua_close)
{
    for (const std::string& name : functionNames) {
        lua_register(mState.get(), name.c_str(), doNothingInLua);
    }
}

bool LuaInterpreter::evaluate(const std::string& line)
{
    return luaL_loadbuffer(mState.get(), line.c_str(), line.size(), "line") == LUA_OK &&
           lua_pcall(mState.get(), 0, 0, 0) == LUA_OK;
}

} // namespace zephyr::bench
