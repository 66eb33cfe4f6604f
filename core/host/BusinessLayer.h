#pragma once
// The business layer the report service is given at Initialise: database, formats, utilities.

#include <cstdint>
#include <memory>
#include <string>

#include "core/host/BusinessObjects.h"
#include "core/host/Database.h"
#include "platform/runtime/Variant.h"

namespace trellin {

class TLReport;

// Turns the text of a list parameter ("A100..A199, B7, 'X,Y'") into an SQL condition on `field`.
class RangeBuilder {
 public:
  virtual ~RangeBuilder() = default;
  // `data_type` is 8 for text fields and 3 for numeric ones. Returns a condition without outer
  // brackets, with every value placed through the Database literal operations. Throws
  // std::invalid_argument with a message naming the bad item for text it cannot read.
  [[nodiscard]] virtual std::string BuildRangeCondition(const std::string& field,
                                                        const std::string& value,
                                                        int data_type) = 0;
};

class Rounder {
 public:
  virtual ~Rounder() = default;
  // Rounds half away from zero to `digits` decimals (4 down to -3). Null stays Null; a
  // Currency stays Currency, other numbers become Double.
  [[nodiscard]] virtual Variant Round(const Variant& value, int digits) = 0;
  // The amount in words for a cheque: "One hundred and twenty dollars and 50 cents" style,
  // with the unit words given. `cents_as_words` spells the cents too.
  [[nodiscard]] virtual std::string AmountInWords(Currency amount, bool cents_as_words,
                                                  const std::string& unit, const std::string& units,
                                                  const std::string& cent,
                                                  const std::string& cents) = 0;
};

class Utilities {
 public:
  virtual ~Utilities() = default;
  // Reads the next token of `text` from the 1-based `position`, up to the character with code
  // `delimiter_code`, and moves `position` past it; when the text is used up `position` turns
  // negative. Double quotes group a token that holds the delimiter.
  [[nodiscard]] virtual std::string GetNextToken(const std::string& text, std::int64_t& position,
                                                 int delimiter_code) = 0;
  [[nodiscard]] virtual trellin::RangeBuilder& RangeBuilder() = 0;
  [[nodiscard]] virtual trellin::Rounder& Rounder() = 0;
};

class ReportFactory {
 public:
  virtual ~ReportFactory() = default;
  [[nodiscard]] virtual std::shared_ptr<TLReport> CreateReport() = 0;
};

class BusinessLayer : public Object {
 public:
  [[nodiscard]] virtual std::string ProductName() const = 0;
  [[nodiscard]] virtual std::shared_ptr<trellin::Database> Database() const = 0;
  // Masks for the format-mask engine.
  [[nodiscard]] virtual std::string DateFormat() const = 0;
  [[nodiscard]] virtual std::string LongDateFormat() const = 0;
  [[nodiscard]] virtual std::string CurrencyFormat(int reserved = 0) const = 0;
  [[nodiscard]] virtual std::int64_t OverdueFromDefault() const = 0;
  [[nodiscard]] virtual trellin::ReportFactory& ReportFactory() = 0;
  [[nodiscard]] virtual trellin::Utilities& Utilities() = 0;
  // Fresh look-ups of parties, branches, banks, tax categories and the like for one report run;
  // the designer keeps it from ReportStart to ReportEnd.
  [[nodiscard]] virtual std::unique_ptr<BusinessObjects> CreateObjects() = 0;
};

}  // namespace trellin
