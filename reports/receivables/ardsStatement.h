#pragma once
// The customer statement run ("StatementAR"): one document per customer that has a balance at the
// statement's date or moved in its month (in the open-item style, also one with an item open at
// the date), with the customer's address, the branch's letterhead, the lines from the sub-report
// ardsStatementLines on srptTransactions, a message, and a tear-off remittance stub with a
// two-column ageing on the customer's last page. Each customer starts a new page, and its pages
// are numbered from 1; the pages before its last say "Continued next page" where the stub stands.

#include <cstdint>
#include <memory>
#include <string>

#include "core/Designer.h"
#include "core/host/BusinessObjects.h"
#include "core/host/Recordset.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"
#include "reports/receivables/PartyDocument.h"
#include "reports/receivables/ardsStatementLines.h"

namespace trellin {

// What the text parameter `Other` asks for: its tags, tested in this order and each taken out of
// the text when found.
struct StatementOptions {
  bool hide_letterhead =
      false;  // "[HT]": the branch's name, address and details on pre-printed paper
  bool hide_remittance = false;  // "[HR]": no branch footer line on the stub
  bool open_item = false;        // "[OI]"
  std::string rest;              // the text left when the tags are out
};
[[nodiscard]] StatementOptions ReadStatementOptions(std::string other);

// The stub's two figures: what fell due before the statement's month, and what falls due in it.
struct StatementAgeing {
  Currency overdue;
  Currency current;
};

// The texts of a customer's heading, parted by CR LF: the address block (name, "Postal" address,
// "ABN: " and the business number on AU companies, then "Statement for your Account " and the
// date), and the branch's name, address, details and the stub's footer line. A customer the
// business layer does not know (`party` null) has only the statement line; no branch leaves the
// branch's texts empty.
struct StatementHeading {
  std::string address;
  std::string branch_name;
  std::string branch_address;
  std::string branch_details;
  std::string branch_footer;
};
[[nodiscard]] StatementHeading StatementHeadingOf(const OtherParty* party, const Branch* branch,
                                                  bool australian, const std::string& date_text);

class ardsStatement : public Designer {
 public:
  ardsStatement() : Designer("ardsStatement") {}

  void RefreshParameters(std::string& ReportName) override;

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void ActiveReport_ReportEnd() override;

  // The customers' query, from the parameters of the host: "SELECT ... FROM OtherParty WHERE "
  // GetSQLWhere " ORDER BY " GetSQLOrderBy. Throws what the range builder throws for a list it
  // cannot read.
  [[nodiscard]] std::string GetSQL() const;
  [[nodiscard]] std::string GetSQLWhere() const;
  [[nodiscard]] std::string GetSQLOrderBy() const;

  // The queries of one customer, as the run sends them; valid once the run has started.
  [[nodiscard]] std::string ClosingBalanceSQL(const std::string& party) const;
  [[nodiscard]] std::string LaterMovementSQL(const std::string& party) const;
  [[nodiscard]] std::string MovementInMonthSQL(const std::string& party) const;
  [[nodiscard]] std::string OpenAtDateSQL(const std::string& party) const;
  [[nodiscard]] std::string AgeingSQL(const std::string& party) const;
  [[nodiscard]] std::string AllocatedSinceMonthSQL(const std::string& party) const;

  // The customer's balance at the date, by document date. Throws DatabaseError.
  [[nodiscard]] Currency ClosingBalanceOf(const std::string& party);
  // Overdue and Current at the month's end, back-dated allocations given back. Throws
  // DatabaseError.
  [[nodiscard]] StatementAgeing AgeingOf(const std::string& party);

  // The business objects the run reads customers and branches from; by default the business
  // layer's own. Set before the run, for a business layer that answers differently.
  void UseObjects(std::unique_ptr<BusinessObjects> objects) { objects_ = std::move(objects); }
  // Every query the run sends, the sub-report's included; set before the run.
  void SetQueryLog(QueryLog log) { query_log_ = std::move(log); }
  [[nodiscard]] const std::shared_ptr<ardsStatementLines>& Lines() const { return lines_; }

 private:
  // --- the customers and their figures (ardsStatement_sql.cpp) ---
  [[nodiscard]] std::shared_ptr<Recordset> Run(const std::string& sql);
  [[nodiscard]] bool Issues(const std::string& party, Currency closing);
  [[nodiscard]] bool HasItemOpenAtDate(const std::string& party);

  // --- the bands (ardsStatement.cpp) ---
  void HideEverything();
  void CustomerHeader_Format();
  void PageHeader_Format();
  void PageFooter_Format();
  void SetText(const char* control, const std::string& text);

  StatementOptions options_;
  Date date_as_at_;
  Date date_from_;
  Date month_ends_[2];
  Currency closing_balance_;
  bool remittance_ = true;
  bool printed_any_ = false;
  bool no_customers_ = false;
  DocumentPages pages_;
  std::string message_;
  std::shared_ptr<Recordset> customers_;
  std::unique_ptr<BusinessObjects> objects_;
  std::shared_ptr<ardsStatementLines> lines_;
  QueryLog query_log_;
};

[[nodiscard]] DesignerPtr CreateardsStatement();

}  // namespace trellin
