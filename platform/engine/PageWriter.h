#pragma once
// Puts bands onto pages and hands each page to the sink the moment it is complete. Holds only
// the page being filled.

#include <functional>
#include <memory>
#include <vector>

#include "platform/engine/Band.h"
#include "platform/engine/PageModel.h"

namespace trellin::engine {

// Paper and margins in twips, orientation applied.
struct PageGeometry {
  float width = 11906;
  float height = 16838;
  float left = 1080;
  float top = 720;
  float bottom = 720;
};

// The page header and footer of the report being written. The writer asks for the header when it
// starts a page and for the footer when the page is full, so the footer of page n is always
// formatted before the header of page n+1.
class PageFurniture {
 public:
  virtual ~PageFurniture() = default;
  [[nodiscard]] virtual Band PageHeader(int page) = 0;
  [[nodiscard]] virtual Band PageFooter(int page) = 0;
  // Room kept free for the footer at the foot of every page.
  [[nodiscard]] virtual float FooterReserve() = 0;
};

class PageWriter : public BandSink {
 public:
  PageWriter(PageSink& sink, PageGeometry geometry, PageFurniture& furniture)
      : sink_(sink), geometry_(geometry), furniture_(furniture) {}

  // Asked for the paper once more as the first page opens, so that a report may still turn its
  // page in ReportStart (a list of many columns turns to landscape).
  void SetGeometrySource(std::function<PageGeometry()> source) { source_ = std::move(source); }

  void Place(Band band) override;
  void StartSection(bool new_page) override;
  [[nodiscard]] int CurrentPage() const override;
  [[nodiscard]] float Room() override;
  // Ends the last page; a report that placed nothing still gets one page with its furniture.
  void Finish();
  [[nodiscard]] int PagesWritten() const { return pages_written_; }

 private:
  // Places a band at once, breaking the page where it must.
  void PlaceNow(Band band);
  // Places the headings held back for `next`, first ending the page when they and the start of
  // `next` do not fit on it together but would on a fresh page.
  void PlaceHeld(const Band* next);
  void EnsurePage();
  void FinishPage();
  // Copies the band's items onto the page at `y`.
  void Put(Band& band, float y);

  PageSink& sink_;
  PageGeometry geometry_;
  std::function<PageGeometry()> source_;
  PageFurniture& furniture_;
  Page page_;
  std::vector<Band> held_;  // headings waiting for the band that follows them
  bool page_open_ = false;
  bool has_body_ = false;
  bool pending_break_ = false;
  int page_number_ = 0;
  int pages_written_ = 0;
  float y_ = 0;
  float body_top_ = 0;
  float body_bottom_ = 0;
};

}  // namespace trellin::engine
