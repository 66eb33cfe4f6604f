#pragma once
// Late binding: the one door through which a layout script reaches the report's objects. An
// object answers by name (without regard to case, as the stored scripts write them) whether it
// has a property or a method of that name, gets and sets properties, and calls methods, all with
// Variants. The script engine knows nothing else of the objects it is handed.

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/host/Controls.h"
#include "platform/runtime/Strings.h"
#include "platform/runtime/Variant.h"

namespace trellin {

enum class MemberKind { None, Property, Method };

class Dispatch : public Object {
 public:
  // What `name` is on this object; None when it has no such member.
  [[nodiscard]] virtual MemberKind Member(std::string_view name) const = 0;
  // Each throws NoSuchItem for a member the object lacks (or a property that cannot be set), and
  // the member's own error for a value it refuses.
  [[nodiscard]] virtual Variant Get(std::string_view name) = 0;
  virtual void Set(std::string_view name, const Variant& value) = 0;
  virtual Variant Call(std::string_view name, const std::vector<Variant>& args) = 0;
  // What the object is called in messages ("Control txtName", "Recordset").
  [[nodiscard]] virtual std::string TypeName() const = 0;
  // Whether the object property `name` gives is the same for as long as this one lives (a
  // report's sections and controls, its Fields): a script engine may then keep it rather than
  // ask again. False unless a dispatch says so.
  [[nodiscard]] virtual bool Lasting(std::string_view name) const {
    (void)name;
    return false;
  }
  // Where the value property `name` is kept, when it is kept in the same place for as long as
  // this object lives (a report's field: its value changes row by row, its place does not): a
  // script engine may then read it there rather than ask by name on every row. nullptr unless a
  // dispatch says so.
  [[nodiscard]] virtual const Variant* KeptAt(std::string_view name) const {
    (void)name;
    return nullptr;
  }
};

// Hashing and comparing names without regard to case, without making a lower-case copy.
struct CaseBlindHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view s) const noexcept {
    std::size_t h = 14695981039346656037ull;
    for (char c : s) {
      const auto u = static_cast<unsigned char>(c);
      h = (h ^ static_cast<std::size_t>(u >= 'A' && u <= 'Z' ? u + 32 : u)) * 1099511628211ull;
    }
    return h;
  }
};
struct CaseBlindEqual {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const noexcept {
    return EqualsIgnoreCase(a, b);
  }
};

// The members of one kind of object, as a table built once per kind: a property has a getter
// and perhaps a setter, a method a body. A kind may add members found by name at run time (a
// report's controls, a recordset's fields) through its Other* overrides.
template <typename T>
class MemberTable {
 public:
  using Getter = std::function<Variant(T&)>;
  using Setter = std::function<void(T&, const Variant&)>;
  using Body = std::function<Variant(T&, const std::vector<Variant>&)>;
  struct Entry {
    Getter get;
    Setter set;
    Body call;
  };

  MemberTable& Property(std::string_view name, Getter get, Setter set = nullptr) {
    entries_[LCase(name)] = Entry{std::move(get), std::move(set), nullptr};
    return *this;
  }
  MemberTable& Method(std::string_view name, Body call) {
    entries_[LCase(name)] = Entry{nullptr, nullptr, std::move(call)};
    return *this;
  }
  [[nodiscard]] const Entry* Find(std::string_view name) const {
    auto it = entries_.find(name);
    return it == entries_.end() ? nullptr : &it->second;
  }

 private:
  std::unordered_map<std::string, Entry, CaseBlindHash, CaseBlindEqual> entries_;
};

// A Dispatch over a table of members, with hooks for the members found by name at run time.
template <typename Self>
class TableDispatch : public Dispatch {
 public:
  [[nodiscard]] MemberKind Member(std::string_view name) const override {
    if (const auto* e = Self::Table().Find(name)) {
      return e->call ? MemberKind::Method : MemberKind::Property;
    }
    return HasOther(name) ? MemberKind::Property : MemberKind::None;
  }
  [[nodiscard]] Variant Get(std::string_view name) override {
    if (const auto* e = Self::Table().Find(name); e && e->get) return e->get(self());
    if (HasOther(name)) return GetOther(name);
    throw NoSuchItem(TypeName() + " has no property '" + std::string(name) + "'");
  }
  void Set(std::string_view name, const Variant& value) override {
    if (const auto* e = Self::Table().Find(name)) {
      if (!e->set) throw NoSuchItem(TypeName() + "." + std::string(name) + " cannot be set");
      e->set(self(), value);
      return;
    }
    if (HasOther(name)) return SetOther(name, value);
    throw NoSuchItem(TypeName() + " has no property '" + std::string(name) + "'");
  }
  Variant Call(std::string_view name, const std::vector<Variant>& args) override {
    if (const auto* e = Self::Table().Find(name); e && e->call) return e->call(self(), args);
    throw NoSuchItem(TypeName() + " has no method '" + std::string(name) + "'");
  }

 protected:
  [[nodiscard]] virtual bool HasOther(std::string_view name) const {
    (void)name;
    return false;
  }
  [[nodiscard]] virtual Variant GetOther(std::string_view name) {
    throw NoSuchItem(TypeName() + " has no property '" + std::string(name) + "'");
  }
  virtual void SetOther(std::string_view name, const Variant& value) {
    (void)value;
    throw NoSuchItem(TypeName() + "." + std::string(name) + " cannot be set");
  }

 private:
  Self& self() { return static_cast<Self&>(*this); }
};

// The argument at `index`, Empty when the call gave fewer.
[[nodiscard]] inline const Variant& Arg(const std::vector<Variant>& args, std::size_t index) {
  static const Variant empty;
  return index < args.size() ? args[index] : empty;
}

}  // namespace trellin
