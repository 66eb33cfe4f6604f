// Every format writes beside its target and renames at the end: a cancelled, failed or abandoned
// run leaves nothing, and an older good file survives it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RenderTestSupport.h"
#include "platform/render/Render.h"

namespace trellin::render {
namespace {

using testing::ScratchDir;

struct FormatCase {
  Format format;
  const char* target;
  const char* first_file;  // what End leaves for a one-page run
};

constexpr FormatCase kFormats[] = {
    {Format::Pdf, "out.pdf", "out.pdf"},    {Format::Png, "out.png", "out-1.png"},
    {Format::Html, "out.html", "out.html"}, {Format::Text, "out.txt", "out.txt"},
    {Format::Csv, "out.csv", "out.csv"},    {Format::Xlsx, "out.xlsx", "out.xlsx"},
};

enum class Ending { Abort, Destroy, AbortTwice };

void RunAndStop(const FormatCase& c, const ScratchDir& dir, Ending ending) {
  auto sink = MakeSink(c.format, dir / c.target);
  sink->Begin(testing::LetterDocument("Ledger"));
  sink->AddPage(testing::SampleLedgerPage(1, 4));
  sink->AddPage(testing::SampleLedgerPage(2, 4, 4));
  if (ending == Ending::Abort || ending == Ending::AbortTwice) sink->Abort();
  if (ending == Ending::AbortTwice) sink->Abort();
  sink.reset();
}

TEST(StagedOutput, StoppedRunsLeaveNothingAndKeepTheOlderFile) {
  for (const FormatCase& c : kFormats) {
    for (Ending ending : {Ending::Abort, Ending::Destroy, Ending::AbortTwice}) {
      SCOPED_TRACE(std::string(c.target) + " ending " + std::to_string(static_cast<int>(ending)));
      ScratchDir empty;
      RunAndStop(c, empty, ending);
      EXPECT_THAT(empty.Files(), ::testing::IsEmpty());

      ScratchDir kept;
      testing::WriteFile(kept / c.first_file, "good older output");
      RunAndStop(c, kept, ending);
      EXPECT_THAT(kept.Files(), ::testing::ElementsAre(c.first_file));
      EXPECT_EQ(testing::ReadFile(kept / c.first_file), "good older output");
    }
  }
}

TEST(StagedOutput, EndReplacesTheOlderFileAndLeavesNoTemporaryFiles) {
  for (const FormatCase& c : kFormats) {
    SCOPED_TRACE(c.target);
    ScratchDir dir;
    testing::WriteFile(dir / c.first_file, "good older output");
    auto sink = MakeSink(c.format, dir / c.target);
    sink->Begin(testing::LetterDocument("Ledger"));
    sink->AddPage(testing::SampleLedgerPage(1, 4));
    sink->End();
    sink->Abort();  // after End, nothing is undone
    EXPECT_THAT(dir.Files(), ::testing::ElementsAre(c.first_file));
    EXPECT_NE(testing::ReadFile(dir / c.first_file), "good older output");
    EXPECT_GT(std::filesystem::file_size(dir / c.first_file), 20u);
    // A new file gets the usual permissions, not the owner-only ones of a temporary file.
    const auto perms = std::filesystem::status(dir / c.first_file).permissions();
    EXPECT_NE(perms & std::filesystem::perms::others_read, std::filesystem::perms::none);
  }
}

TEST(StagedOutput, MissingFolderFailsAtBeginWithTheFileNamed) {
  for (const FormatCase& c : kFormats) {
    SCOPED_TRACE(c.target);
    ScratchDir dir;
    const auto target = dir / "no-such-folder" / c.target;
    auto sink = MakeSink(c.format, target);
    try {
      sink->Begin(testing::LetterDocument("Ledger"));
      ADD_FAILURE() << "Begin succeeded";
    } catch (const RenderError& e) {
      EXPECT_THAT(e.what(), ::testing::HasSubstr("no-such-folder"));
    }
    EXPECT_THROW(sink->AddPage(testing::LetterPage(1)), RenderError);
    EXPECT_THAT(dir.Files(), ::testing::IsEmpty());
  }
}

TEST(StagedOutput, StepsOutOfOrderAreErrors) {
  ScratchDir dir;
  auto sink = MakeSink(Format::Text, dir / "out.txt");
  EXPECT_THROW(sink->AddPage(testing::LetterPage(1)), RenderError);
  EXPECT_THROW(sink->End(), RenderError);
  sink->Begin(testing::LetterDocument("Ledger"));
  EXPECT_THROW(sink->Begin(testing::LetterDocument("Ledger")), RenderError);
  sink->End();
  EXPECT_THROW(sink->AddPage(testing::LetterPage(1)), RenderError);
  EXPECT_THROW(sink->End(), RenderError);
  EXPECT_THAT(dir.Files(), ::testing::ElementsAre("out.txt"));
}

TEST(StagedOutput, PngSeriesIsExactlyThisRunsPages) {
  ScratchDir dir;
  for (const char* stale : {"out-1.png", "out-2.png", "out-3.png", "out-4.png"}) {
    testing::WriteFile(dir / stale, "older run");
  }
  auto sink = MakeSink(Format::Png, dir / "out.png");
  sink->Begin(testing::LetterDocument("Ledger"));
  sink->AddPage(testing::SampleLedgerPage(1, 2));
  engine::Page landscape = testing::SampleLedgerPage(2, 2, 2);
  std::swap(landscape.width, landscape.height);
  sink->AddPage(landscape);
  // Until End the older series stands untouched.
  EXPECT_EQ(testing::ReadFile(dir / "out-1.png"), "older run");
  sink->End();
  EXPECT_THAT(dir.Files(), ::testing::ElementsAre("out-1.png", "out-2.png"));
  // Width and height, big-endian, at bytes 16 and 20 of the image header.
  auto size = [](const std::filesystem::path& path) {
    const std::string png = testing::ReadFile(path);
    auto word = [&](std::size_t at) -> unsigned {
      return (static_cast<unsigned char>(png[at]) << 24) |
             (static_cast<unsigned char>(png[at + 1]) << 16) |
             (static_cast<unsigned char>(png[at + 2]) << 8) |
             static_cast<unsigned char>(png[at + 3]);
    };
    return png.size() > 24 && png.compare(1, 3, "PNG") == 0 ? std::make_pair(word(16), word(20))
                                                            : std::make_pair(0u, 0u);
  };
  EXPECT_EQ(size(dir / "out-1.png"), std::make_pair(816u, 1056u));
  EXPECT_EQ(size(dir / "out-2.png"), std::make_pair(1056u, 816u));
}

TEST(Formats, ExtensionsAndNames) {
  const std::pair<const char*, std::optional<Format>> cases[] = {
      {"a.pdf", Format::Pdf},   {"dir/A.PDF", Format::Pdf},  {"x.png", Format::Png},
      {"x.html", Format::Html}, {"x.htm", Format::Html},     {"x.txt", Format::Text},
      {"x.csv", Format::Csv},   {"x.xlsx", Format::Xlsx},    {"x.xls", std::nullopt},
      {"x", std::nullopt},      {"x.pdf.bak", std::nullopt}, {".pdf", std::nullopt},
  };
  for (const auto& [path, expected] : cases) EXPECT_EQ(FormatFromExtension(path), expected) << path;
  for (Format f :
       {Format::Pdf, Format::Png, Format::Html, Format::Text, Format::Csv, Format::Xlsx}) {
    EXPECT_EQ(FormatFromName(FormatName(f)), f);
  }
  EXPECT_EQ(FormatFromName("TXT"), Format::Text);
  EXPECT_EQ(PngPagePath("out/ledger.png", 3), "out/ledger-3.png");
  EXPECT_EQ(PngPagePath("out/ledger", 1), "out/ledger-1.png");
  EXPECT_EQ(PngPagePath("ledger.v2.PNG", 12), "ledger.v2-12.PNG");
  EXPECT_EQ(FormatFromName("docx"), std::nullopt);
  RenderOptions bad;
  bad.png_dpi = 0;
  EXPECT_THROW((void)MakeSink(Format::Png, "x.png", bad), RenderError);
  RenderOptions no_cell;
  no_cell.text_line_twips = 0;
  EXPECT_THROW((void)MakeSink(Format::Text, "x.txt", no_cell), RenderError);
  EXPECT_THROW((void)MakeSink(Format::Pdf, "folder/"), RenderError);
}

}  // namespace
}  // namespace trellin::render
