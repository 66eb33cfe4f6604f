#pragma once
// The business layer's utilities: tokens, list conditions, rounding.

#include <cstdint>
#include <string>

#include "core/host/BusinessLayer.h"
#include "platform/business/CompanyRangeBuilder.h"
#include "platform/business/CompanyRounder.h"

namespace trellin::business {

// GetNextToken reads from the 1-based `position` up to the next character with code
// `delimiter_code` outside double quotes. The quotes group text that holds the delimiter and
// are not part of the token ("" inside them stands for one quote); blanks are kept. `position`
// moves past the delimiter; when no delimiter follows, or `position` is not inside the text, it
// turns -1 (the token read last is still returned). A text ending in the delimiter gives one
// empty token more. Throws std::invalid_argument for a delimiter code outside 1 to 255.
class CompanyUtilities : public Utilities {
 public:
  [[nodiscard]] std::string GetNextToken(const std::string& text, std::int64_t& position,
                                         int delimiter_code) override;
  [[nodiscard]] trellin::RangeBuilder& RangeBuilder() override { return range_builder_; }
  [[nodiscard]] trellin::Rounder& Rounder() override { return rounder_; }

 private:
  CompanyRangeBuilder range_builder_;
  CompanyRounder rounder_;
};

}  // namespace trellin::business
