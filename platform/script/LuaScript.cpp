#include "platform/script/LuaScript.h"

#include <lua.hpp>

#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include "core/host/ActiveReport.h"
#include "core/host/Dispatch.h"
#include "core/host/HostDispatch.h"
#include "platform/runtime/Strings.h"

namespace trellin::script {
namespace {

// Userdata kinds: a value Lua has no type for (money, a date, Null), and a late-bound object.
// Every full userdata in a script's state is one of the two (the libraries opened make none, and
// a script cannot make one), and each starts with its kind, so that telling them apart is a read
// of one byte rather than a look-up of the metatable. Both are standard layout for that reason.
constexpr const char* kValueMeta = "trellin.Value";
constexpr const char* kObjectMeta = "trellin.Object";

enum class BoxKind : unsigned char { Value = 0x56, Object = 0x4f };

// A value box holds plain data: it needs no finalizer, so the many a handler makes on every row
// (an amount read, the sum it computes) cost the collector no more than a string would.
struct ValueBox {
  BoxKind kind;
  VariantKind of;
  Currency money;
  Date date;

  [[nodiscard]] Variant Get() const {
    switch (of) {
      case VariantKind::Currency:
        return Variant(money);
      case VariantKind::Date:
        return Variant(date);
      default:
        return Variant::Null();
    }
  }
};

// An object box owns its object through a shared_ptr built in place, beside the Dispatch found
// once when the box is made.
struct ObjectBox {
  BoxKind kind;
  Dispatch* dispatch;
  alignas(std::shared_ptr<Object>) unsigned char owner[sizeof(std::shared_ptr<Object>)];

  std::shared_ptr<Object>& Owner() {
    return *std::launder(reinterpret_cast<std::shared_ptr<Object>*>(owner));
  }
};

static_assert(std::is_standard_layout_v<ValueBox> && std::is_trivially_destructible_v<ValueBox>);
static_assert(std::is_standard_layout_v<ObjectBox>);

BoxKind KindAt(lua_State* L, int index) {
  if (lua_type(L, index) != LUA_TUSERDATA) return BoxKind{};
  return *static_cast<const BoxKind*>(lua_touserdata(L, index));
}

const ValueBox* TestValue(lua_State* L, int index) {
  return KindAt(L, index) == BoxKind::Value ? static_cast<const ValueBox*>(lua_touserdata(L, index))
                                            : nullptr;
}

ObjectBox* TestObject(lua_State* L, int index) {
  return KindAt(L, index) == BoxKind::Object ? static_cast<ObjectBox*>(lua_touserdata(L, index))
                                             : nullptr;
}

// What a script's state keeps beside it, reached through its extra space: the limits and what
// has been spent of them, and the registry's numbers of the two kinds' metatables (a look-up by
// number is the cheapest the registry gives, and every box made needs its metatable).
struct Budget {
  std::int64_t steps_left = 0;
  std::int64_t steps = 0;
  std::size_t used = 0;
  std::size_t limit = 0;
  std::string handler;
  std::string file;
  int value_meta = LUA_NOREF;
  int object_meta = LUA_NOREF;
};

constexpr int kHookEvery = 1000;

Budget& BudgetOf(lua_State* L) { return **static_cast<Budget**>(lua_getextraspace(L)); }

void PushMeta(lua_State* L, BoxKind kind) {
  const Budget& b = BudgetOf(L);
  lua_rawgeti(L, LUA_REGISTRYINDEX, kind == BoxKind::Value ? b.value_meta : b.object_meta);
}

void SetMeta(lua_State* L, BoxKind kind) {
  PushMeta(L, kind);
  lua_setmetatable(L, -2);
}

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
      if (const ValueBox* v = TestValue(L, index)) return v->Get();
      if (ObjectBox* o = TestObject(L, index)) return Variant(o->Owner());
      break;
    default:
      break;
  }
  luaL_error(L, "a %s cannot be handed to the report", luaL_typename(L, index));
  return {};
}

void PushUserValue(lua_State* L, const Variant& v) {
  auto* box = static_cast<ValueBox*>(lua_newuserdatauv(L, sizeof(ValueBox), 0));
  box->kind = BoxKind::Value;
  box->of = v.Kind();
  const Currency* money = v.Get<Currency>();
  const Date* date = v.Get<Date>();
  box->money = money != nullptr ? *money : Currency();
  box->date = date != nullptr ? *date : Date();
  SetMeta(L, BoxKind::Value);
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
      // User value 1: the lasting objects reached from this one; 2: where its values are kept
      // (ObjectIndex).
      auto* box = static_cast<ObjectBox*>(lua_newuserdatauv(L, sizeof(ObjectBox), 2));
      box->kind = BoxKind::Object;
      auto& owner = *new (box->owner) std::shared_ptr<Object>(v.ToObject());
      box->dispatch = dynamic_cast<Dispatch*>(owner.get());
      SetMeta(L, BoxKind::Object);
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
  Variant v = static_cast<const ValueBox*>(lua_touserdata(L, 1))->Get();
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

// --- Objects ---

// The object at `index`, which the object metatable's own members are only ever called with: the
// metatables are hidden from scripts (`__metatable`), and the debug library is not opened.
Dispatch& DispatchAt(lua_State* L, int index) {
  Dispatch* d = static_cast<ObjectBox*>(lua_touserdata(L, index))->dispatch;
  if (d == nullptr) luaL_error(L, "this object has no members a script can reach");
  return *d;
}

// The object's user value `n`, a table made on first use: 1 holds the lasting objects reached from
// it by name as written, 2 (as light userdata) the Variants where its value properties are kept.
void PushUserTable(lua_State* L, int object, int n) {
  if (lua_getiuservalue(L, object, n) == LUA_TTABLE) return;
  lua_pop(L, 1);
  lua_newtable(L);
  lua_pushvalue(L, -1);
  lua_setiuservalue(L, object, n);
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

int ObjectIndex(lua_State* L);

// A miss in an object's table of lasting members: the object is upvalue 1.
int KnownIndex(lua_State* L) {
  lua_pushvalue(L, lua_upvalueindex(1));
  lua_replace(L, 1);
  return ObjectIndex(L);
}

// Gives the object at `object` a metatable of its own whose __index is its table of lasting
// members (user value 1), so that reading one (`rpt.txtName`, `rpt.Fields`) is a table look-up
// inside Lua with no call into the binding; a name the table lacks comes to ObjectIndex through
// the table's own metatable. Leaves the table on the stack.
void OwnMetatable(lua_State* L, int object) {
  lua_newtable(L);  // the lasting members
  lua_createtable(L, 0, 1);
  lua_pushvalue(L, object);
  lua_pushcclosure(L, KnownIndex, 1);
  lua_setfield(L, -2, "__index");
  lua_setmetatable(L, -2);
  lua_pushvalue(L, -1);
  lua_setiuservalue(L, object, 1);
  lua_newtable(L);  // the object's own metatable: the kind's, with __index the table
  PushMeta(L, BoxKind::Object);
  lua_pushnil(L);
  while (lua_next(L, -2) != 0) {
    lua_pushvalue(L, -2);
    lua_insert(L, -2);
    lua_rawset(L, -5);
  }
  lua_pop(L, 1);
  lua_pushvalue(L, -2);
  lua_setfield(L, -2, "__index");
  lua_setmetatable(L, object);
}

// `obj.Name`. What a lasting property gives (a report's control, section or Fields) and where a
// value property is kept (a report's field) are remembered with the object under the name as
// written, so that a handler run for every row asks the report by name once a run.
int ObjectIndex(lua_State* L) {
  Dispatch& d = DispatchAt(L, 1);
  std::size_t size = 0;
  const char* text = luaL_checklstring(L, 2, &size);
  if (lua_getiuservalue(L, 1, 2) == LUA_TTABLE) {
    lua_pushvalue(L, 2);
    if (lua_rawget(L, -2) == LUA_TLIGHTUSERDATA) {
      PushVariant(L, *static_cast<const Variant*>(lua_touserdata(L, -1)));
      return 1;
    }
    lua_pop(L, 1);
  }
  lua_pop(L, 1);
  std::string_view name(text, size);
  return Guarded(L, [&] {
    switch (d.Member(name)) {
      case MemberKind::Property: {
        if (const Variant* kept = d.KeptAt(name)) {
          PushUserTable(L, 1, 2);
          lua_pushvalue(L, 2);
          lua_pushlightuserdata(L, const_cast<Variant*>(kept));
          lua_rawset(L, -3);
          lua_pop(L, 1);
          PushVariant(L, *kept);
          return 1;
        }
        Variant value = d.Get(name);
        PushVariant(L, value);
        if (value.IsObject() && d.Lasting(name)) {
          if (lua_getiuservalue(L, 1, 1) != LUA_TTABLE) {
            lua_pop(L, 1);
            OwnMetatable(L, 1);
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
  ObjectBox* a = TestObject(L, 1);
  ObjectBox* b = TestObject(L, 2);
  lua_pushboolean(L, a && b && a->Owner().get() == b->Owner().get() ? 1 : 0);
  return 1;
}

// A box a script's own finalizer still holds after this one ran (at the state's close) is no
// longer an object: its members and its handing to the report fail as for any foreign value.
int ObjectGc(lua_State* L) {
  using Ptr = std::shared_ptr<Object>;
  auto* box = static_cast<ObjectBox*>(lua_touserdata(L, 1));
  box->Owner().~Ptr();
  box->dispatch = nullptr;
  box->kind = BoxKind{};
  return 0;
}

// getmetatable gives scripts this text in place of the metatable, so that none can call a member
// of it on something else.
void Hide(lua_State* L) {
  lua_pushliteral(L, "locked");
  lua_setfield(L, -2, "__metatable");
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
                                 {nullptr, nullptr}};
  luaL_newmetatable(L, kValueMeta);
  luaL_setfuncs(L, value_meta, 0);
  Hide(L);
  BudgetOf(L).value_meta = luaL_ref(L, LUA_REGISTRYINDEX);

  const luaL_Reg object_meta[] = {{"__index", ObjectIndex}, {"__newindex", ObjectNewIndex},
                                  {"__call", ObjectCall},   {"__tostring", ObjectToString},
                                  {"__eq", ObjectEqual},    {"__gc", ObjectGc},
                                  {nullptr, nullptr}};
  luaL_newmetatable(L, kObjectMeta);
  luaL_setfuncs(L, object_meta, 0);
  Hide(L);
  BudgetOf(L).object_meta = luaL_ref(L, LUA_REGISTRYINDEX);

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
    if (it == handlers_.end() || stopped_) return {};
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
    if (t == LUA_TUSERDATA && KindAt(L_, -1) != BoxKind::Value &&
        KindAt(L_, -1) != BoxKind::Object) {
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
