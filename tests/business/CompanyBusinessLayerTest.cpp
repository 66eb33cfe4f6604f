#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/business/CompanyBusinessLayer.h"
#include "platform/business/CompanyFormats.h"
#include "tests/support/FakeDatabase.h"

namespace trellin::business {
namespace {

TEST(CompanyBusinessLayerTest, FormatsDefaultUnlessTheCompanySaysOtherwise) {
  auto database = std::make_shared<testing::FakeDatabase>();
  CompanyBusinessLayer plain(database);
  EXPECT_EQ(plain.ProductName(), "Kestrane");
  EXPECT_EQ(plain.DateFormat(), "d/mm/yyyy");
  EXPECT_EQ(plain.LongDateFormat(), "d mmmm yyyy");
  EXPECT_EQ(plain.CurrencyFormat(0), kCompanyCurrencyFormat);
  EXPECT_EQ(plain.OverdueFromDefault(), -9999999999);
  EXPECT_EQ(plain.Database(), database);

  database->SetSetting("Formats", "Date", "dd/mm/yy");
  database->SetSetting("Formats", "LongDate", "dddd, d mmmm yyyy");
  database->SetSetting("Formats", "Currency", "$#,##0.00");
  database->SetSetting("Options", "OverdueFromDefault", "0");
  CompanyBusinessLayer own(database);
  EXPECT_EQ(own.DateFormat(), "dd/mm/yy");
  EXPECT_EQ(own.LongDateFormat(), "dddd, d mmmm yyyy");
  EXPECT_EQ(own.CurrencyFormat(0), "$#,##0.00");
  EXPECT_EQ(own.OverdueFromDefault(), 0);

  // A setting cleared in the application brings the default back.
  database->SetSetting("Formats", "Date", " ");
  EXPECT_EQ(CompanyBusinessLayer(database).DateFormat(), "d/mm/yyyy");
}

TEST(CompanyBusinessLayerTest, BadSettingAndMissingFactoryAreClearErrors) {
  auto database = std::make_shared<testing::FakeDatabase>();
  database->SetSetting("Options", "OverdueFromDefault", "lots");
  try {
    CompanyBusinessLayer layer(database);
    ADD_FAILURE() << "bad setting accepted";
  } catch (const std::runtime_error& e) {
    EXPECT_STREQ(e.what(),
                 "The company setting Options/OverdueFromDefault is \"lots\", which is not a "
                 "whole number.");
  }
  EXPECT_THROW(CompanyBusinessLayer(nullptr), std::invalid_argument);

  CompanyBusinessLayer layer(std::make_shared<testing::FakeDatabase>());
  EXPECT_THROW((void)layer.ReportFactory().CreateReport(), std::logic_error);
  layer.SetReportFactory([] { return std::shared_ptr<TLReport>(); });
  try {
    (void)layer.ReportFactory().CreateReport();
    ADD_FAILURE() << "no host accepted";
  } catch (const std::logic_error& e) {
    EXPECT_STREQ(e.what(), "The report factory gave no report host.");
  }
  // The utilities are the company's: a list condition goes through the database's literals.
  EXPECT_EQ(layer.Utilities().RangeBuilder().BuildRangeCondition("Id", "O'Neil", 8),
            "Id='O''Neil'");
}

}  // namespace
}  // namespace trellin::business
