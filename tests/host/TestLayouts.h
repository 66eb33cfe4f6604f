#pragma once
// The stored layouts of the host tests' designers: the furniture, group sections and footers
// the host fills, as the real layouts carry them.

namespace trellin::host::testing {

inline constexpr char kCustomersLayout[] = R"(
Report:
  Caption: Stored Title
  PrintWidth: 9746
Sections:
  - Name: PageHeader
    Height: 600
    Controls:
      - {Class: Label, Name: lblReportTitle, Rect: [0, 0, 5000, 300], Caption: Stored Title}
      - {Class: Label, Name: phDated, Rect: [5000, 0, 4746, 240], Caption: $Dated}
      - {Class: Field, Name: txtCompanyName, Rect: [0, 300, 5000, 240], Text: CompanyName}
  - Name: GroupHeader2
    Height: 300
    Controls:
      - {Class: Label, Name: ghLabel2, Rect: [0, 0, 9000, 260]}
  - Name: GroupHeader1
    Height: 300
    Controls:
      - {Class: Label, Name: ghLabel1, Rect: [0, 0, 9000, 260]}
  - Name: Detail
    Height: 250
    Controls:
      - {Class: Field, Name: txtId, DataField: OtherPartyId, Rect: [0, 0, 1500, 240]}
      - {Class: Field, Name: txtName, DataField: Name, Rect: [1500, 0, 4000, 240]}
      - {Class: Field, Name: txtLimit, DataField: CustomerCreditLimit, Rect: [6000, 0, 2000, 240], OutputFormat: "#,##0.00", Alignment: Right}
  - Name: GroupFooter1
    Height: 250
    Controls:
      - {Class: Label, Name: gfLabel1, Rect: [0, 0, 4000, 240]}
      - {Class: Field, Name: gf1SummaryId, Rect: [4000, 0, 1000, 240]}
      - {Class: Field, Name: gfCount1, DataField: OtherPartyId, Rect: [5000, 0, 800, 240]}
      - {Class: Field, Name: gf1Limit, DataField: CustomerCreditLimit, SummaryType: SubTotal, Rect: [6000, 0, 2000, 240], OutputFormat: "#,##0.00", Alignment: Right}
  - Name: GroupFooter2
    Height: 250
    Controls:
      - {Class: Label, Name: gfLabel2, Rect: [0, 0, 4000, 240]}
      - {Class: Field, Name: gfCount2, DataField: OtherPartyId, Rect: [5000, 0, 800, 240]}
  - Name: PageFooter
    Height: 300
    Controls:
      - {Class: Label, Name: lblNotice, Rect: [0, 0, 6000, 240], Caption: $Notice}
      - {Class: Field, Name: txtPage, DataField: '="Page " & rpt.PageNumber', Rect: [7000, 0, 2746, 240]}
  - Name: ReportFooter
    Height: 300
    Controls:
      - {Class: Label, Name: rfParameters, Rect: [0, 0, 1500, 240], Caption: Parameters}
      - {Class: Field, Name: txtParameters, Rect: [1500, 0, 5000, 240], Text: Parameters}
      - {Class: Field, Name: rfCount, DataField: OtherPartyId, Rect: [8000, 0, 1000, 240]}
)";

inline constexpr char kColumnsLayout[] = R"(
Report:
  Caption: Customer Columns
  PrintWidth: 9000
Sections:
  - Name: PageHeader
    Height: 400
    Controls:
      - {Class: Label, Name: lblReportTitle, Rect: [0, 0, 5000, 300], Caption: Customer Columns}
      - {Class: Label, Name: lblHeading, Rect: [0, 400, 9000, 240]}
  - Name: GroupHeader2
    Height: 300
    Controls:
      - {Class: Label, Name: ghLabel2, Rect: [0, 0, 9000, 260]}
  - Name: GroupHeader1
    Height: 300
    Controls:
      - {Class: Label, Name: ghLabel1, Rect: [0, 0, 9000, 260]}
  - Name: Detail
    Height: 0
  - Name: GroupFooter1
    Height: 250
  - Name: GroupFooter2
    Height: 250
  - Name: ReportFooter
    Height: 300
)";

// A list of customer types with each type's customers in a sub-report under its row.
inline constexpr char kTypesLayout[] = R"(
Report:
  Caption: Customer Types
  PrintWidth: 9000
Sections:
  - Name: Detail
    Height: 300
    Controls:
      - {Class: Field, Name: txtType, DataField: CustomerTypeId, Rect: [0, 0, 2000, 240]}
      - {Class: Subreport, Name: srptCustomers, Rect: [500, 300, 6000, 0]}
)";

inline constexpr char kTypeCustomersLayout[] = R"(
Sections:
  - Name: Detail
    Height: 250
    Controls:
      - {Class: Field, Name: txtId, DataField: OtherPartyId, Rect: [0, 0, 1500, 240]}
)";

}  // namespace trellin::host::testing
