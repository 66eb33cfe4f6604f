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

// The movements the asset reports name, by their stored type.
constexpr Code kTypes[] = {
    {10, "Purchase"},     {11, "Addition"},     {12, "Revaluation"},  {14, "Revaluation of cost"},
    {20, "Depreciation"}, {21, "Depreciation"}, {23, "Depreciation"}, {24, "Depreciation"},
    {30, "Gain/Loss"},    {31, "Gain/Loss"},    {40, "Disposal"},     {41, "Disposal"},
    {42, "Disposal"},     {43, "Disposal"},     {44, "Revaluation"},
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

std::string Asset::TypeText(int type) {
  for (const Code& c : kTypes) {
    if (c.code == type) return c.text;
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
