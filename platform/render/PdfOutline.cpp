#include "platform/render/PdfOutline.h"

namespace trellin::render {

void PdfOutline::Add(const std::vector<std::string>& path, int page, double top) {
  if (path.empty()) return;
  if (root_ == 0) root_ = file_.Reserve();
  std::size_t shared = 0;
  while (shared < open_.size() && shared + 1 < path.size() && open_[shared].name == path[shared]) {
    ++shared;
  }
  // The entry open at the level where the paths part is followed by the new one; those below
  // it end with their parent.
  const int new_id = file_.Reserve();
  while (open_.size() > shared + 1) Close(0);
  int prev = 0;
  if (open_.size() == shared + 1) {
    prev = open_.back().id;
    Close(new_id);
  }
  for (std::size_t level = shared; level < path.size(); ++level) {
    Entry entry;
    entry.name = path[level];
    entry.id = level == shared ? new_id : file_.Reserve();
    entry.prev = level == shared ? prev : 0;
    entry.page = page;
    entry.top = top;
    if (level == 0) {
      if (root_first_ == 0) root_first_ = entry.id;
      root_last_ = entry.id;
      ++visible_;
    } else {
      Entry& parent = open_.back();
      if (parent.first == 0) parent.first = entry.id;
      parent.last = entry.id;
      ++parent.children;
      if (level == 1) ++visible_;
    }
    open_.push_back(std::move(entry));
  }
}

void PdfOutline::Close(int next) {
  Entry& entry = open_.back();
  const int parent = open_.size() > 1 ? open_[open_.size() - 2].id : root_;
  std::string out = "<</Title";
  pdf::AppendTextString(out, entry.name);
  out += "/Parent " + std::to_string(parent) + " 0 R";
  if (entry.prev != 0) out += "/Prev " + std::to_string(entry.prev) + " 0 R";
  if (next != 0) out += "/Next " + std::to_string(next) + " 0 R";
  if (entry.children > 0) {
    out += "/First " + std::to_string(entry.first) + " 0 R/Last " + std::to_string(entry.last) +
           " 0 R/Count ";
    // Open at the top level, closed below: a closed entry counts its children negative.
    out += std::to_string(open_.size() == 1 ? entry.children : -entry.children);
  }
  out += "/Dest[" + std::to_string(entry.page) + " 0 R/XYZ 0 ";
  pdf::AppendNumber(out, entry.top);
  out += " 0]>>";
  file_.WriteObject(entry.id, out);
  open_.pop_back();
}

int PdfOutline::Finish() {
  if (root_ == 0) return 0;
  while (!open_.empty()) Close(0);
  file_.WriteObject(root_, "<</Type/Outlines/First " + std::to_string(root_first_) + " 0 R/Last " +
                               std::to_string(root_last_) + " 0 R/Count " +
                               std::to_string(visible_) + ">>");
  return root_;
}

}  // namespace trellin::render
