#include "reports/ledger/arglAccountReportsNew.h"

#include <array>
#include <map>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

constexpr int kMonths = 12;
constexpr int kGroupLevels = 5;

// What the chart says about one posting account: the heading in force at each level, the
// nearest heading, and the total and clear rows that close its part of the chart.
struct ChartLabels {
  std::array<Variant, kGroupLevels + 1> groups;  // [1] to [5], Null where no heading stands
  Variant heading, total, clear;
  std::string description;
};

std::string RowCaption(const std::string& id, const std::string& description) {
  return Trim(id + " " + description);
}

}  // namespace

DesignerPtr CreatearglAccountReportsNew() { return std::make_shared<arglAccountReportsNew>(); }

std::string arglAccountReportsNew::RowsSQL(const std::string& accounts) {
  return "SELECT AccountId,(SELECT Sum(Value) FROM glTransaction WHERE "
         "glTransaction.AccountId=Account.AccountId) AS RowTotal FROM Account WHERE ALevel<5 AND "
         "Post Is Null AND (SELECT Count(*) FROM glTransaction WHERE "
         "glTransaction.AccountId=Account.AccountId)>10" +
         (accounts.empty() ? std::string() : " AND " + accounts) + " ORDER BY AccountId";
}

void arglAccountReportsNew::RefreshParameters(std::string& ReportName) {
  (void)ReportName;
  TLReport()->SetHasParameters(true);
  trellin::Parameters& p = TLReport()->Parameters();
  p.AddList("OrderBy", "Code", true, "", "Code", "Code,Description", false, "Order By");
  CreateStandardParameter(0, p, false);
}

void arglAccountReportsNew::ActiveReport_DataInitialize() {
  for (const char* name :
       {"AccountId", "Description", "Heading", "Clear", "Total", "GroupValue1", "GroupValue2",
        "GroupValue3", "GroupValue4", "GroupValue5", "BranchDept", "RowTotal"}) {
    Fields().Add(name);
  }
}

void arglAccountReportsNew::ActiveReport_ReportStart() {
  TLReport()->SetupStandardHeader(true);
  CreateColumns();
  BuildRows();
}

void arglAccountReportsNew::CreateColumns() {
  // Twelve months back from today, the oldest first, left of the total.
  Section& header = Sections()["PageHeader"];
  Section& detail = Sections()["Detail"];
  const Control& caption_model = Field("lblTotal");
  const Control& figure_model = Field("numTotal");
  constexpr float kWidth = 800;
  constexpr float kGap = 60;
  const Date this_month = Today().FirstOfMonth();
  auto like = [](Control& c, const Control& model, float left) {
    c.SetLeft(left);
    c.SetTop(model.Top());
    c.SetWidth(kWidth - kGap);
    c.SetHeight(model.Height());
    c.SetAlignment(model.Alignment());
    c.Font() = model.Font();
  };
  for (int n = 1; n <= kMonths; ++n) {
    const float left = caption_model.Left() - kWidth * static_cast<float>(kMonths - n + 1);
    Control& caption = header.Controls().Add(ControlClass::Label, "lblCol" + std::to_string(n));
    like(caption, caption_model, left);
    caption.SetCaption(Format(Variant(this_month.AddMonths(n - kMonths)), "mmmyy"));
    Control& figure = detail.Controls().Add(ControlClass::Field, "numCol" + std::to_string(n));
    like(figure, figure_model, left);
    figure.SetOutputFormat(figure_model.OutputFormat());
  }
}

void arglAccountReportsNew::BuildRows() {
  auto database = TrellinReportGlobals::RequireDatabase();
  trellin::Parameters& p = TLReport()->Parameters();
  const std::string accounts = p.Value("Accounts", Variant()).Text();
  const std::string condition = accounts.empty()
                                    ? ""
                                    : TrellinReportGlobals::RequireBusinessLayer()
                                          .Utilities()
                                          .RangeBuilder()
                                          .BuildRangeCondition("AccountId", accounts, kRangeText);
  // The pass over the chart: the headings in force as it goes, and for each account the total
  // and clear rows that follow it.
  auto chart =
      database->Query("SELECT AccountId,Description,Post,ALevel FROM Account ORDER BY AccountId");
  std::map<std::string, ChartLabels> labels;
  std::vector<std::string> waiting_total, waiting_clear;
  std::array<Variant, kGroupLevels + 1> in_force;
  in_force.fill(Variant::Null());
  for (; !chart->Eof(); chart->MoveNext()) {
    const std::string id = chart->Value("AccountId").Text();
    const std::string description =
        chart->Value("Description").IsNull() ? "" : chart->Value("Description").Text();
    const std::string post =
        chart->Value("Post").IsNull() ? "" : UCase(Trim(chart->Value("Post").Text()));
    const int level = std::clamp(
        chart->Value("ALevel").IsNull() ? 1 : static_cast<int>(chart->Value("ALevel").ToLong()), 1,
        kGroupLevels);
    if (post.empty()) {
      ChartLabels& row = labels[id];
      row.groups = in_force;
      row.description = description;
      for (int l = kGroupLevels; l >= 1; --l) {
        if (!in_force[static_cast<std::size_t>(l)].IsNull()) {
          row.heading = in_force[static_cast<std::size_t>(l)];
          break;
        }
      }
      waiting_total.push_back(id);
      waiting_clear.push_back(id);
      continue;
    }
    const char code = post[0];
    if (code == 'H' || code == 'G') {
      in_force[static_cast<std::size_t>(level)] = Variant(RowCaption(id, description));
      for (int l = level + 1; l <= kGroupLevels; ++l) {
        in_force[static_cast<std::size_t>(l)] = Variant::Null();
      }
    } else if (code == 'T' || code == 'C') {
      auto& waiting = code == 'T' ? waiting_total : waiting_clear;
      for (const std::string& account : waiting) {
        (code == 'T' ? labels[account].total : labels[account].clear) =
            Variant(RowCaption(id, description));
      }
      waiting.clear();
      if (code == 'C') {
        for (int l = level; l <= kGroupLevels; ++l) {
          in_force[static_cast<std::size_t>(l)] = Variant::Null();
        }
      }
    }
  }
  rows_ = database->NewRecordset();
  for (const char* name :
       {"AccountId", "Description", "Heading", "Clear", "Total", "GroupValue1", "GroupValue2",
        "GroupValue3", "GroupValue4", "GroupValue5", "BranchDept"}) {
    rows_->AppendField(name, FieldType::Text, 255);
  }
  rows_->AppendField("RowTotal", FieldType::Currency);
  for (auto source = database->Query(RowsSQL(condition)); !source->Eof(); source->MoveNext()) {
    const std::string id = source->Value("AccountId").Text();
    const ChartLabels& row = labels[id];
    rows_->AddNew();
    rows_->SetValue("AccountId", Variant(id));
    rows_->SetValue("Description", Variant(row.description));
    rows_->SetValue("Heading", row.heading);
    rows_->SetValue("Clear", row.clear);
    rows_->SetValue("Total", row.total);
    for (int l = 1; l <= kGroupLevels; ++l) {
      rows_->SetValue("GroupValue" + std::to_string(l), row.groups[static_cast<std::size_t>(l)]);
    }
    rows_->SetValue("RowTotal", source->Value("RowTotal"));
    rows_->Update();
  }
  // By description, the accounts keep their groups and change places within them.
  if (p.Value("OrderBy", "Code").Text() == "Description") {
    rows_->Sort(
        "Clear,Total,GroupValue1,GroupValue2,GroupValue3,GroupValue4,GroupValue5,Description");
  } else if (rows_->RecordCount() > 0) {
    rows_->MoveFirst();
  }
}

void arglAccountReportsNew::ActiveReport_FetchData(bool& eof) {
  if (!rows_ || rows_->Eof()) {
    eof = true;
    return;
  }
  for (int i = 0; i < rows_->FieldCount(); ++i) {
    Fields()[rows_->Field(i).name].SetValue(rows_->Value(i));
  }
  rows_->MoveNext();
  eof = false;
}

void arglAccountReportsNew::OnFormat(Section& section) {
  const std::string& name = section.Name();
  // A group section of a level no heading stands at prints nothing; a footer whose count field
  // is empty stays hidden.
  for (int l = 1; l <= kGroupLevels; ++l) {
    const std::string level = std::to_string(l);
    if (name == "GHGroup" + level) {
      section.SetVisible(!Fields()["GroupValue" + level].Value().IsNull());
    } else if (name == "GFGroup" + level) {
      const Control* count = FindControl("GFGroup" + level + "Count");
      const bool empty = count == nullptr || count->DataValue().IsNull() ||
                         count->DataValue().IsEmpty() || count->DataValue().ToDouble() == 0;
      section.SetVisible(!empty);
    }
  }
  if (name == "GHTotal" || name == "GFTotal") {
    section.SetVisible(!Fields()["Total"].Value().IsNull());
  }
}

void arglAccountReportsNew::ActiveReport_ReportEnd() { rows_.reset(); }

}  // namespace trellin
