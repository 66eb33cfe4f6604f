#include "core/host/AssetDepreciation.h"

#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

struct Code {
  int code;
  const char* text;
};

constexpr Code kBases[] = {
    {static_cast<int>(DepreciationBasis::StraightLine), "SL"},
    {static_cast<int>(DepreciationBasis::DiminishingValue), "DV"},
};

constexpr Code kStatuses[] = {
    {static_cast<int>(AssetStatus::OnOrder), "On Order"},
    {static_cast<int>(AssetStatus::InUse), "In Use"},
    {static_cast<int>(AssetStatus::Available), "Available"},
    {static_cast<int>(AssetStatus::Disposed), "Disposed"},
    {static_cast<int>(AssetStatus::Scrapped), "Scrapped"},
};

}  // namespace

std::string Asset::BasisText(int basis) {
  for (const Code& c : kBases) {
    if (c.code == basis) return c.text;
  }
  return {};
}

std::string Asset::StatusText(int status) {
  for (const Code& c : kStatuses) {
    if (c.code == status) return c.text;
  }
  return {};
}

int Asset::StatusFromText(std::string_view text) {
  const std::string trimmed = Trim(text);
  for (const Code& c : kStatuses) {
    if (EqualsIgnoreCase(c.text, trimmed)) return c.code;
  }
  return 0;
}

}  // namespace trellin
