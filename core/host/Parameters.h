#pragma once
// The parameter collection of a report, in order of adding.

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "core/host/Parameter.h"
#include "platform/runtime/Error.h"

namespace trellin {

// Raised by Item for a name the collection does not hold.
class NoSuchParameter : public Error {
 public:
  explicit NoSuchParameter(const std::string& message) : Error(ErrorKind::Report, message) {}
};

// Every Add takes the same head (Name, Value, Primary, Prompt, DefaultValue), what the kind
// needs, and ends in Caption; it returns the new parameter. Adding a name that exists replaces
// the earlier parameter in its place. Names match without regard to case.
class Parameters {
 public:
  ParameterPtr AddBoolean(const std::string& name, bool value, bool primary,
                          const std::string& prompt, bool default_value, bool flag,
                          const std::string& caption);
  ParameterPtr AddDate(const std::string& name, const Variant& value, bool primary,
                       const std::string& prompt, const Variant& default_value, bool flag,
                       const std::string& caption);
  ParameterPtr AddMultiList(const std::string& name, const Variant& value, bool primary,
                            const std::string& prompt, const Variant& default_value,
                            const std::string& choices, bool flag, bool reserved,
                            const std::string& caption);
  ParameterPtr AddList(const std::string& name, const Variant& value, bool primary,
                       const std::string& prompt, const Variant& default_value,
                       const std::string& choices, bool flag, const std::string& caption);
  ParameterPtr AddNumber(const std::string& name, const Variant& value, bool primary,
                         const std::string& prompt, const Variant& default_value,
                         std::int64_t initial, bool flag, const std::string& caption);
  ParameterPtr AddSQLList(const std::string& name, const Variant& value, bool primary,
                          const std::string& prompt, const Variant& default_value,
                          const std::string& list_sql, const std::string& key_field, bool flag,
                          const std::string& caption);
  ParameterPtr AddString(const std::string& name, const Variant& value, bool primary,
                         const std::string& prompt, const Variant& default_value, bool flag,
                         const std::string& caption);
  ParameterPtr AddParameter(bool reserved, ParameterPtr parameter);

  [[nodiscard]] bool Exists(std::string_view name) const;
  // The parameter's value; `default_value` when there is no such parameter.
  [[nodiscard]] Variant Value(std::string_view name,
                              const Variant& default_value = Variant()) const;
  // Sets the value of an existing parameter; throws NoSuchParameter otherwise.
  void SetValue(std::string_view name, const Variant& value);
  // Throws NoSuchParameter.
  [[nodiscard]] Parameter& Item(std::string_view name) const;
  [[nodiscard]] ParameterPtr Find(std::string_view name) const;
  void Remove(std::string_view name);
  [[nodiscard]] std::size_t Count() const { return items_.size(); }

  // Checks every parameter's value against its kind: a date that is not a date, a choice that
  // is not in the list, a number that is not a number, an unknown grouping. Sets Valid() and
  // Errors(); each error names the parameter by its caption (else its name) and says what is wrong.
  void Validate(const std::string& reserved = "");
  [[nodiscard]] bool Valid() const { return valid_; }
  [[nodiscard]] const std::vector<std::string>& Errors() const { return errors_; }

  [[nodiscard]] auto begin() const { return items_.begin(); }
  [[nodiscard]] auto end() const { return items_.end(); }

 private:
  ParameterPtr Put(ParameterPtr parameter);

  std::vector<ParameterPtr> items_;
  bool valid_ = true;
  std::vector<std::string> errors_;
};

}  // namespace trellin
