#pragma once
// "LabelsAR", "LabelsAP", "OtherPartyLabels", "ContactLabels": mailing labels on a sheet, one
// label a party's address of the kinds picked (or a contact, with its party's postal address),
// laid out by the engine's detail columns from the sheet's geometry. No page furniture: a sheet
// is all labels.

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/ListDesigner.h"

namespace trellin {

// A sheet of labels, in twips: the paper, the cells across and down, a label's size, the top and
// left margins and the gap between columns.
struct LabelSheet {
  std::string_view name;
  std::string_view paper;  // "A4", "Letter"
  float paper_width;
  float paper_height;
  int across;
  int down;
  float width;
  float height;
  float top;
  float left;
  float gap;
};

// The sheets offered, the first the default; nullptr for a name not among them.
[[nodiscard]] const LabelSheet* FindLabelSheet(std::string_view name);
[[nodiscard]] std::span<const LabelSheet> LabelSheets();

// The lines of one label, clipped to `room` lines: the heading lines (name, and a contact's
// party), the street lines, then the place and the country. When there are too many, street
// lines go from the last up, so the place and postcode always print.
[[nodiscard]] std::vector<std::string> LabelLines(std::vector<std::string> heading,
                                                  std::vector<std::string> street,
                                                  std::vector<std::string> tail, int room);

class arLabels : public ListDesigner {
 public:
  arLabels();

  // Adds Sheet, StartPosition, Copies and OutlineCells after the key's own.
  void RefreshParameters(std::string& ReportName) override;
  // Sets paper, margins, the label's size and the columns from the sheet, reads the labels, and
  // runs unbound over them. Throws std::invalid_argument for a sheet it does not know, or a
  // start position or number of copies out of range.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;

  // The lines a line of the label can hold on the sheet.
  [[nodiscard]] static int Room(const LabelSheet& sheet);

 protected:
  // Party keys keep the addresses of the kinds picked (Postal when none is).
  [[nodiscard]] std::string ExtraCondition() override;
  void Detail_Format() override {}

 private:
  void ReadLabels(const LabelSheet& sheet);

  std::vector<std::vector<std::string>> labels_;
  std::size_t next_ = 0;
  int copies_ = 1;
  bool contacts_ = false;
};

[[nodiscard]] DesignerPtr CreatearLabels();

}  // namespace trellin
