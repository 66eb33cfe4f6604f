#include "platform/data/CheckedSum.h"

#include <cstdint>
#include <string>

namespace trellin::data {
namespace {

struct Sum {
  double real = 0;         // every value, as a double
  std::int64_t whole = 0;  // the integers, while no real has come
  std::int64_t count = 0;
  bool approximate = false;
  bool overflow = false;
  bool bad = false;
};

void Step(sqlite3_context* context, int /*argc*/, sqlite3_value** argv) {
  auto* sum = static_cast<Sum*>(sqlite3_aggregate_context(context, sizeof(Sum)));
  if (sum == nullptr || sum->bad) return;
  switch (sqlite3_value_numeric_type(argv[0])) {
    case SQLITE_NULL:
      return;
    case SQLITE_INTEGER: {
      const std::int64_t v = sqlite3_value_int64(argv[0]);
      sum->real += static_cast<double>(v);
      if (!sum->approximate && !sum->overflow &&
          __builtin_add_overflow(sum->whole, v, &sum->whole)) {
        sum->overflow = true;
      }
      break;
    }
    case SQLITE_FLOAT:
      sum->real += sqlite3_value_double(argv[0]);
      sum->approximate = true;
      break;
    default: {
      // Text that does not read as a number, or a blob.
      std::string shown;
      if (sqlite3_value_type(argv[0]) == SQLITE_BLOB) {
        shown = "a blob of " + std::to_string(sqlite3_value_bytes(argv[0])) + " bytes";
      } else {
        const auto* text = sqlite3_value_text(argv[0]);
        shown = "'" + std::string(text != nullptr ? reinterpret_cast<const char*>(text) : "") + "'";
        if (shown.size() > 42) shown = shown.substr(0, 38) + "...'";
      }
      sum->bad = true;
      const std::string message = "a summed value holds " + shown + ", which is not a number";
      sqlite3_result_error(context, message.c_str(), static_cast<int>(message.size()));
      return;
    }
  }
  ++sum->count;
}

void Final(sqlite3_context* context) {
  auto* sum = static_cast<Sum*>(sqlite3_aggregate_context(context, 0));
  if (sum == nullptr || sum->count == 0) {
    sqlite3_result_null(context);
  } else if (sum->overflow) {
    sqlite3_result_error(context, "integer overflow", -1);
  } else if (sum->approximate) {
    sqlite3_result_double(context, sum->real);
  } else {
    sqlite3_result_int64(context, sum->whole);
  }
}

}  // namespace

int UseCheckedSum(sqlite3* db) {
  return sqlite3_create_function(db, "sum", 1,
                                 SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                                 nullptr, Step, Final);
}

}  // namespace trellin::data
