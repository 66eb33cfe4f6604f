#include "platform/script/LuaScript.h"

#include <lua.hpp>

#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/host/ActiveReport.h"
#include "core/host/Dispatch.h"
#include "core/host/HostDispatch.h"
#include "platform/runtime/Strings.h"

namespace trellin::script {
namespace {

// Userdata kinds: a value Lua has no type for (money, a date, Null), and a late-bound object.
constexpr const char* kValueMeta = "trellin.Value";
constexpr const char* kObjectMeta = "trellin.Object";

// The two metatables are kept in the registry under these addresses as well as by name: every
// member access checks a userdata's kind, and a look-up by address costs less than one by name.
const char kValueKey = 0;
const char kObjectKey = 0;

const void* KeyOf(const char* meta) { return meta == kValueMeta ? &kValueKey : &kObjectKey; }

void* TestUserdata(lua_State* L, int index, const char* meta) {
  void* p = lua_touserdata(L, index);
  if (p == nullptr || lua_getmetatable(L, index) == 0) return nullptr;
  lua_rawgetp(L, LUA_REGISTRYINDEX, KeyOf(meta));
  const bool same = lua_rawequal(L, -1, -2) != 0;
  lua_pop(L, 2);
  return same ? p : nullptr;
}

void* CheckUserdata(lua_State* L, int index, const char* meta) {
  void* p = TestUserdata(L, index, meta);
  if (p == nullptr) luaL_typeerror(L, index, meta);
  return p;
}

void SetMeta(lua_State* L, const char* meta) {
  lua_rawgetp(L, LUA_REGISTRYINDEX, KeyOf(meta));
  lua_setmetatable(L, -2);
}

struct Budget {
  std::int64_t steps_left = 0;
  std::int64_t steps = 0;
  std::size_t used = 0;
  std::size_t limit = 0;
  std::string handler;
  std::string file;
};

constexpr int kHookEvery = 1000;

Budget& BudgetOf(lua_State* L) { return **static_cast<Budget**>(lua_getextraspace(L)); }

void* Allocate(void* ud, void* ptr, std::size_t old_size, std::size_t new_size) {
  auto* budget = static_cast<Budget*>(ud);
  if (ptr == nullptr) old_size = 0;
  if (new_size == 0) {
    std::free(ptr);
    budget->used -= old_size;
    return nullptr;
  }
  if (new_size > old_size && budget->used - old_size + new_size > budget->limit) return nullptr;
  void* p = std::realloc(ptr, new_size);
  if (p != nullptr) budget->used = budget->used - old_size + new_size;
  return p;
}

// How Lua shortens a chunk's name in its messages (60 characters at most), so that the messages
// can carry the whole file name again.
std::string ShortSource(const std::string& file) {
  constexpr std::size_t kRoom = LUA_IDSIZE - 1;
  if (file.size() <= kRoom) return file;
  return "..." + file.substr(file.size() - (kRoom - 3));
}

std::string WholeFileName(std::string message, const std::string& file) {
  std::string shortened = ShortSource(file);
  if (shortened != file && message.compare(0, shortened.size(), shortened) == 0) {
    message.replace(0, shortened.size(), file);
  }
  return message;
}

void StepHook(lua_State* L, lua_Debug* ar) {
  Budget& b = BudgetOf(L);
  b.steps_left -= kHookEvery;
  if (b.steps_left > 0) return;
  lua_getinfo(L, "Sl", ar);
  std::string where =
      ar->currentline > 0 ? b.file + ":" + std::to_string(ar->currentline) + ": " : b.file + ": ";
  std::string what = b.handler.empty() ? std::string("the script") : b.handler;
  lua_pushstring(L, (where + what + " ran past its " + std::to_string(b.steps) +
                     " steps and was stopped (an endless loop?); the script runs no more")
                        .c_str());
  lua_error(L);
}

// --- Values ---

void PushVariant(lua_State* L, const Variant& v);

Variant ToVariant(lua_State* L, int index) {
  switch (lua_type(L, index)) {
    case LUA_TNIL:
    case LUA_TNONE:
      return {};
    case LUA_TBOOLEAN:
      return Variant(lua_toboolean(L, index) != 0);
    case LUA_TNUMBER:
      if (lua_isinteger(L, index))
        return Variant(static_cast<std::int64_t>(lua_tointeger(L, index)));
      return Variant(static_cast<double>(lua_tonumber(L, index)));
    case LUA_TSTRING: {
      std::size_t n = 0;
      const char* s = lua_tolstring(L, index, &n);
      return Variant(std::string(s, n));
    }
    case LUA_TUSERDATA:
      if (void* p = TestUserdata(L, index, kValueMeta)) return *static_cast<Variant*>(p);
      if (void* p = TestUserdata(L, index, kObjectMeta)) {
        return Variant(*static_cast<std::shared_ptr<Object>*>(p));
      }
      break;
    default:
      break;
  }
  luaL_error(L, "a %s cannot be handed to the report", luaL_typename(L, index));
  return {};
}

void PushUserValue(lua_State* L, const Variant& v) {
  void* p = lua_newuserdatauv(L, sizeof(Variant), 0);
  new (p) Variant(v);
  SetMeta(L, kValueMeta);
}

void PushVariant(lua_State* L, const Variant& v) {
  switch (v.Kind()) {
    case VariantKind::Empty:
    case VariantKind::Missing:
      lua_pushnil(L);
      return;
    case VariantKind::Boolean:
      lua_pushboolean(L, *v.Get<bool>() ? 1 : 0);
      return;
    case VariantKind::Long:
      lua_pushinteger(L, static_cast<lua_Integer>(*v.Get<std::int64_t>()));
      return;
    case VariantKind::Double:
      lua_pushnumber(L, *v.Get<double>());
      return;
    case VariantKind::String: {
      const std::string& s = *v.Get<std::string>();
      lua_pushlstring(L, s.data(), s.size());
      return;
    }
    case VariantKind::Null:
    case VariantKind::Currency:
    case VariantKind::Date:
      PushUserValue(L, v);
      return;
    case VariantKind::Object: {
      // The user value keeps the lasting objects reached from this one (ObjectIndex).
      void* p = lua_newuserdatauv(L, sizeof(std::shared_ptr<Object>), 1);
      new (p) std::shared_ptr<Object>(v.ToObject());
      SetMeta(L, kObjectMeta);
      return;
    }
  }
  lua_pushnil(L);
}

// Runs `body`, turning a C++ exception into a Lua error that names the script's line. The Lua
// error is raised outside the try, so that Lua's own unwinding passes through untouched.
template <typename Body>
int Guarded(lua_State* L, Body&& body) {
  std::string message;
  try {
    return body();
  } catch (const std::exception& e) {
    message = e.what();
  }
  luaL_where(L, 1);
  lua_pushstring(L, message.c_str());
  lua_concat(L, 2);
  return lua_error(L);
}

template <Variant (*Op)(const Variant&, const Variant&)>
int Arithmetic(lua_State* L) {
  return Guarded(L, [&] {
    PushVariant(L, Op(ToVariant(L, 1), ToVariant(L, 2)));
    return 1;
  });
}

int ValueNegate(lua_State* L) {
  return Guarded(L, [&] {
    PushVariant(L, Negate(ToVariant(L, 1)));
    return 1;
  });
}

int ValueConcat(lua_State* L) {
  return Guarded(L, [&] {
    std::string s = Concat(ToVariant(L, 1), ToVariant(L, 2)).Text();
    lua_pushlstring(L, s.data(), s.size());
    return 1;
  });
}

int ValueToString(lua_State* L) {
  const Variant& v = *static_cast<Variant*>(CheckUserdata(L, 1, kValueMeta));
  std::string s = v.IsNull() ? std::string("Null") : v.Text();
  lua_pushlstring(L, s.data(), s.size());
  return 1;
}

// Comparisons with Null are unknown, which an `if` reads as false.
template <bool (*Test)(int)>
int ValueCompare(lua_State* L) {
  return Guarded(L, [&] {
    std::optional<int> c = Compare(ToVariant(L, 1), ToVariant(L, 2));
    lua_pushboolean(L, c && Test(*c) ? 1 : 0);
    return 1;
  });
}

// Null equals Null (so that `x == Null` tests for it) and nothing else.
int ValueEqual(lua_State* L) {
  return Guarded(L, [&] {
    Variant a = ToVariant(L, 1);
    Variant b = ToVariant(L, 2);
    bool equal = a.IsNull() || b.IsNull() ? a.IsNull() && b.IsNull() : Compare(a, b) == 0;
    lua_pushboolean(L, equal ? 1 : 0);
    return 1;
  });
}

bool IsLess(int c) { return c < 0; }
bool IsLessOrEqual(int c) { return c <= 0; }

int ValueGc(lua_State* L) {
  static_cast<Variant*>(CheckUserdata(L, 1, kValueMeta))->~Variant();
  return 0;
}

// --- Objects ---

Dispatch& DispatchAt(lua_State* L, int index) {
  auto& object = *static_cast<std::shared_ptr<Object>*>(CheckUserdata(L, index, kObjectMeta));
  auto* d = dynamic_cast<Dispatch*>(object.get());
  if (d == nullptr) luaL_error(L, "this object has no members a script can reach");
  return *d;
}

std::vector<Variant> Arguments(lua_State* L, int from) {
  std::vector<Variant> args;
  for (int i = from, top = lua_gettop(L); i <= top; ++i) args.push_back(ToVariant(L, i));
  return args;
}

// A method fetched as `obj.Name` or `obj:Name`: the object is upvalue 1, the name upvalue 2;
// called with the colon, the object comes again as the first argument and is skipped.
int CallMethod(lua_State* L) {
  Dispatch& d = DispatchAt(L, lua_upvalueindex(1));
  int from = 1;
  if (lua_gettop(L) >= 1 && lua_rawequal(L, 1, lua_upvalueindex(1))) from = 2;
  std::vector<Variant> args = Arguments(L, from);
  std::string name = lua_tostring(L, lua_upvalueindex(2));
  return Guarded(L, [&] {
    PushVariant(L, d.Call(name, args));
    return 1;
  });
}

// `obj.Name`. What a lasting property gives (a report's control, section or Fields) is kept in
// the object's user value under the name as written, so that a handler run for every row asks
// the report for it once.
int ObjectIndex(lua_State* L) {
  Dispatch& d = DispatchAt(L, 1);
  std::size_t size = 0;
  const char* text = luaL_checklstring(L, 2, &size);
  if (lua_getiuservalue(L, 1, 1) == LUA_TTABLE) {
    lua_pushvalue(L, 2);
    if (lua_rawget(L, -2) != LUA_TNIL) return 1;
    lua_pop(L, 1);
  }
  lua_pop(L, 1);
  std::string_view name(text, size);
  return Guarded(L, [&] {
    switch (d.Member(name)) {
      case MemberKind::Property: {
        Variant value = d.Get(name);
        PushVariant(L, value);
        if (value.IsObject() && d.Lasting(name)) {
          if (lua_getiuservalue(L, 1, 1) != LUA_TTABLE) {
            lua_pop(L, 1);
            lua_newtable(L);
            lua_pushvalue(L, -1);
            lua_setiuservalue(L, 1, 1);
          }
          lua_pushvalue(L, 2);
          lua_pushvalue(L, -3);
          lua_rawset(L, -3);
          lua_pop(L, 1);
        }
        return 1;
      }
      case MemberKind::Method:
        lua_pushvalue(L, 1);
        lua_pushvalue(L, 2);
        lua_pushcclosure(L, CallMethod, 2);
        return 1;
      case MemberKind::None:
        break;
    }
    throw NoSuchItem(d.TypeName() + " has no member '" + std::string(name) + "'");
  });
}

int ObjectNewIndex(lua_State* L) {
  Dispatch& d = DispatchAt(L, 1);
  std::size_t size = 0;
  const char* text = luaL_checklstring(L, 2, &size);
  std::string_view name(text, size);
  Variant value = ToVariant(L, 3);
  return Guarded(L, [&] {
    d.Set(name, value);
    return 0;
  });
}

// `obj(key)`: the default member, Item.
int ObjectCall(lua_State* L) {
  Dispatch& d = DispatchAt(L, 1);
  std::vector<Variant> args = Arguments(L, 2);
  return Guarded(L, [&] {
    PushVariant(L, d.Call("Item", args));
    return 1;
  });
}

int ObjectToString(lua_State* L) {
  Dispatch& d = DispatchAt(L, 1);
  std::string s = d.TypeName();
  lua_pushlstring(L, s.data(), s.size());
  return 1;
}

int ObjectEqual(lua_State* L) {
  auto* a = static_cast<std::shared_ptr<Object>*>(TestUserdata(L, 1, kObjectMeta));
  auto* b = static_cast<std::shared_ptr<Object>*>(TestUserdata(L, 2, kObjectMeta));
  lua_pushboolean(L, a && b && a->get() == b->get() ? 1 : 0);
  return 1;
}

int ObjectGc(lua_State* L) {
  using Ptr = std::shared_ptr<Object>;
  static_cast<Ptr*>(CheckUserdata(L, 1, kObjectMeta))->~Ptr();
  return 0;
}

void OpenLibraries(lua_State* L) {
  const luaL_Reg libraries[] = {{LUA_GNAME, luaopen_base},
                                {LUA_STRLIBNAME, luaopen_string},
                                {LUA_TABLIBNAME, luaopen_table},
                                {LUA_MATHLIBNAME, luaopen_math},
                                {LUA_UTF8LIBNAME, luaopen_utf8}};
  for (const luaL_Reg& lib : libraries) {
    luaL_requiref(L, lib.name, lib.func, 1);
    lua_pop(L, 1);
  }
  // print goes to stderr: stdout may carry the report itself, and a layout's notes are for the
  // one who is writing it.
  lua_pushcfunction(L, [](lua_State* S) {
    std::string line;
    for (int i = 1, n = lua_gettop(S); i <= n; ++i) {
      std::size_t size = 0;
      const char* text = luaL_tolstring(S, i, &size);
      if (i > 1) line += '\t';
      line.append(text, size);
      lua_pop(S, 1);
    }
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
    return 0;
  });
  lua_setglobal(L, "print");
  // No reading of files or of code made at run time.
  for (const char* name : {"dofile", "loadfile", "load"}) {
    lua_pushnil(L);
    lua_setglobal(L, name);
  }

  const luaL_Reg value_meta[] = {{"__add", Arithmetic<Add>},
                                 {"__sub", Arithmetic<Subtract>},
                                 {"__mul", Arithmetic<Multiply>},
                                 {"__div", Arithmetic<Divide>},
                                 {"__unm", ValueNegate},
                                 {"__concat", ValueConcat},
                                 {"__eq", ValueEqual},
                                 {"__lt", ValueCompare<IsLess>},
                                 {"__le", ValueCompare<IsLessOrEqual>},
                                 {"__tostring", ValueToString},
                                 {"__gc", ValueGc},
                                 {nullptr, nullptr}};
  luaL_newmetatable(L, kValueMeta);
  luaL_setfuncs(L, value_meta, 0);
  lua_rawsetp(L, LUA_REGISTRYINDEX, KeyOf(kValueMeta));

  const luaL_Reg object_meta[] = {{"__index", ObjectIndex}, {"__newindex", ObjectNewIndex},
                                  {"__call", ObjectCall},   {"__tostring", ObjectToString},
                                  {"__eq", ObjectEqual},    {"__gc", ObjectGc},
                                  {nullptr, nullptr}};
  luaL_newmetatable(L, kObjectMeta);
  luaL_setfuncs(L, object_meta, 0);
  lua_rawsetp(L, LUA_REGISTRYINDEX, KeyOf(kObjectMeta));

  PushUserValue(L, Variant::Null());
  lua_setglobal(L, "Null");
}

class LuaScript : public LayoutScript {
 public:
  LuaScript(const ScriptLimits& limits, std::string file) {
    budget_.steps = limits.steps;
    budget_.limit = limits.memory;
    budget_.file = std::move(file);
    budget_.steps_left = limits.steps;
    L_ = lua_newstate(Allocate, &budget_);
    if (L_ == nullptr) throw ScriptError(budget_.file + ": no memory for the script");
    *static_cast<Budget**>(lua_getextraspace(L_)) = &budget_;
    lua_sethook(L_, StepHook, LUA_MASKCOUNT, kHookEvery);
  }
  ~LuaScript() override { lua_close(L_); }
  LuaScript(const LuaScript&) = delete;
  LuaScript& operator=(const LuaScript&) = delete;

  void Load(std::string_view source, int first_line, ActiveReport& report) {
    int status = OpenState(report);
    if (status != LUA_OK) Fail();
    // Blank lines in front, so that the script's lines are counted as the file's.
    std::string text(static_cast<std::size_t>(first_line > 1 ? first_line - 1 : 0), '\n');
    text.append(source);
    std::string chunk = "@" + budget_.file;
    if (luaL_loadbufferx(L_, text.data(), text.size(), chunk.c_str(), "t") != LUA_OK) Fail();
    budget_.handler.clear();
    budget_.steps_left = budget_.steps;
    if (lua_pcall(L_, 0, 0, 0) != LUA_OK) Fail();
    // The handlers are the global functions, found later without regard to case.
    lua_pushglobaltable(L_);
    lua_pushnil(L_);
    while (lua_next(L_, -2) != 0) {
      if (lua_type(L_, -2) == LUA_TSTRING && lua_type(L_, -1) == LUA_TFUNCTION &&
          !lua_iscfunction(L_, -1)) {
        std::string name = lua_tostring(L_, -2);
        lua_pushvalue(L_, -1);
        handlers_[name] = Handler{name, luaL_ref(L_, LUA_REGISTRYINDEX)};
      }
      lua_pop(L_, 1);
    }
    lua_pop(L_, 1);
  }

  [[nodiscard]] bool Handles(std::string_view handler) const override {
    return !stopped_ && handlers_.find(handler) != handlers_.end();
  }

  Variant Run(std::string_view handler) override {
    auto it = handlers_.find(handler);
    if (it == handlers_.end()) return {};
    budget_.handler = it->second.name;
    budget_.steps_left = budget_.steps;
    lua_rawgeti(L_, LUA_REGISTRYINDEX, it->second.ref);
    if (lua_pcall(L_, 0, 1, 0) != LUA_OK) {
      // A handler that ran too long would run too long on every row: the script stops for good,
      // and the report goes on without it.
      if (budget_.steps_left <= 0) stopped_ = true;
      Fail();
    }
    Variant result;
    std::string problem;
    try {
      result = ToVariantProtected();
    } catch (const std::exception& e) {
      problem = e.what();
    }
    lua_settop(L_, 0);
    if (!problem.empty()) throw ScriptError(budget_.file + ": " + problem);
    return result;
  }

  void SetGlobal(const std::string& name, const Variant& value) override {
    lua_pushcfunction(L_, [](lua_State* L) {
      auto* v = static_cast<const Variant*>(lua_touserdata(L, 1));
      auto* n = static_cast<const std::string*>(lua_touserdata(L, 2));
      PushVariant(L, *v);
      lua_setglobal(L, n->c_str());
      return 0;
    });
    lua_pushlightuserdata(L_, const_cast<Variant*>(&value));
    lua_pushlightuserdata(L_, const_cast<std::string*>(&name));
    if (lua_pcall(L_, 2, 0, 0) != LUA_OK) Fail();
  }

 private:
  struct Handler {
    std::string name;
    int ref = LUA_NOREF;
  };

  // Opens the libraries and sets `rpt` under protection, so that running out of memory there is
  // an error like any other.
  int OpenState(ActiveReport& report) {
    lua_pushcfunction(L_, [](lua_State* L) {
      auto* r = static_cast<ActiveReport*>(lua_touserdata(L, 1));
      OpenLibraries(L);
      PushVariant(L, Variant(std::static_pointer_cast<Object>(DispatchReport(*r))));
      lua_setglobal(L, "rpt");
      return 0;
    });
    lua_pushlightuserdata(L_, &report);
    return lua_pcall(L_, 1, 0, 0);
  }

  Variant ToVariantProtected() {
    // Only the kinds a handler can sensibly give back; anything else is a mistake of the script.
    int t = lua_type(L_, -1);
    if (t == LUA_TFUNCTION || t == LUA_TTABLE || t == LUA_TTHREAD || t == LUA_TLIGHTUSERDATA) {
      throw ScriptError(budget_.handler + " gave back a " + lua_typename(L_, t));
    }
    if (t == LUA_TUSERDATA && !TestUserdata(L_, -1, kValueMeta) &&
        !TestUserdata(L_, -1, kObjectMeta)) {
      throw ScriptError(budget_.handler + " gave back a userdata");
    }
    return ToVariant(L_, -1);
  }

  [[noreturn]] void Fail() {
    std::string message = lua_type(L_, -1) == LUA_TSTRING ? lua_tostring(L_, -1)
                                                          : std::string("error object is not text");
    lua_settop(L_, 0);
    throw ScriptError(WholeFileName(message, budget_.file));
  }

  Budget budget_;
  bool stopped_ = false;
  lua_State* L_ = nullptr;
  std::unordered_map<std::string, Handler, CaseBlindHash, CaseBlindEqual> handlers_;
};

}  // namespace

std::unique_ptr<LayoutScript> LuaScriptEngine::Compile(std::string_view source,
                                                       std::string_view file, int first_line,
                                                       ActiveReport& report) {
  auto script = std::make_unique<LuaScript>(limits_, std::string(file));
  script->Load(source, first_line, report);
  return script;
}

}  // namespace trellin::script
