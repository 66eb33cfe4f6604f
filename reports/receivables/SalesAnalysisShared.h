#pragma once
// What the sales and purchase analyses and summaries share: the list parameters of each side's
// keys and their filters on the lines' query, and the groupings that are each side's own.

#include <optional>
#include <string>

#include "core/host/Parameters.h"
#include "core/kvReportUtilities.h"

namespace trellin {

// Declares the sales keys' standard lists (customers, locations, departments, employees, the
// customer's payment terms, employee, category, type and location, items, item categories and
// types, jobs, job categories, suppliers); with `job_key` only those on the job, the item and the
// line, which the job keys' queries read.
void AddSalesListParameters(Parameters& parameters, bool job_key);

// Adds the filter of each list declared above that has a value, with its line in `heading`.
// `item_rows` tests Items on Item.ItemId, else on TransactionLine.ItemId. Throws what the range
// builder throws for a list it cannot read.
void AppendSalesListFilters(std::string& where, const Parameters& parameters, std::string& heading,
                            bool job_key, bool item_rows);

// Fills a grouping of the sales reports' own ("Supplier", "Customer", "Customer Employee",
// "Customer Payment Term", "Job Category", "Employee"), or the shared table's with the table the
// field lives in: "TransactionLine" for the lines' own fields, "Item" for the item, else `base`.
// Returns false for a name neither knows.
bool SalesGrouping(ChosenGrouping& grouping, const std::string& base);

// The address a sale went to, as the sales reports head the lines split by address: nullopt for
// a line with no address id (the reports print "Undefined"), "" when the party holds no such
// address or it is blank, else the stored text. Throws DatabaseError.
[[nodiscard]] std::optional<std::string> SaleAddress(const std::string& party,
                                                     const Variant& address_id);

// The purchase keys' lists: suppliers (the document's party) and their payment terms, employee,
// category, type and location, with the lists on the line, item and job the sales keys have.
void AddPurchaseListParameters(Parameters& parameters);
void AppendPurchaseListFilters(std::string& where, const Parameters& parameters,
                               std::string& heading, bool item_rows);

// The purchase reports' own groupings ("Supplier" the item's, "Transactions Supplier" the
// document's, "Supplier Employee", "Supplier Payment Term", "Order Number", "Job Category",
// "Employee"), else the shared table's as SalesGrouping does.
bool PurchaseGrouping(ChosenGrouping& grouping, const std::string& base);

}  // namespace trellin
