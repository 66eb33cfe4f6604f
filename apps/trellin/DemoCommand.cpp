// trellin demo: builds the demo company file.
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <stdexcept>

#include "apps/trellin/CommandLine.h"
#include "apps/trellin/Commands.h"
#include "apps/trellin/Company.h"
#include "apps/trellin/Progress.h"
#include "platform/data/postgres/PostgresCompany.h"
#include "platform/demo/DemoCompany.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/DateText.h"

namespace trellin::cli {

namespace {

const std::vector<OptionSpec> kDemoOptions = {
    {"scale", 0, true, false, "N", "volume, 1 (a small business) to 200; default 1"},
    {"seed", 0, true, false, "S", "the same seed gives the same file; default 1"},
    {"country", 0, true, false, "NZ|AU",
     "balance date and tax of NZ (31 March) or AU (30 June); default NZ"},
    {"present", 0, true, false, "DATE",
     "the company's books run to the end of this date's month; default: last month"},
    {"output", 'o', true, false, "FILE",
     "where to write it (default: the demo company in the user's data folder)"},
    {"db", 0, true, false, "URL",
     "build it on an empty database of a server instead: postgresql://user@host/dbname"},
    {"help", 'h', false, false, "", "show this help"},
};

// A folder of its own for the file a server's demo company is built in, removed at the end.
class Scratch {
 public:
  Scratch() {
    std::string pattern = (std::filesystem::temp_directory_path() / "trellin-demo-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
      throw Error(ErrorKind::CompanyFile, "cannot make a folder to build the demo company in");
    }
    folder_ = pattern;
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  [[nodiscard]] std::filesystem::path File() const { return folder_ / "demo.db"; }

 private:
  std::filesystem::path folder_;
};

long long WholeNumber(const std::string& option, const std::string& text) {
  std::size_t used = 0;
  long long value = 0;
  try {
    value = std::stoll(text, &used);
  } catch (const std::exception&) {
    used = 0;
  }
  if (used == 0 || used != text.size())
    throw UsageError("--" + option + " takes a whole number, not '" + text + "'");
  return value;
}

}  // namespace

Date LastMonthEnd() { return Today().FirstOfMonth().AddDays(-1); }

demo::DemoSummary BuildDemo(const std::filesystem::path& path, int scale, std::uint64_t seed,
                            const std::string& country, Date present) {
  if (path.has_parent_path()) std::filesystem::create_directories(path.parent_path());
  demo::DemoOptions options;
  options.scale = scale;
  options.seed = seed;
  options.country = country;
  options.present = present;
  options.path = path.string();
  Progress progress("building the demo company");
  options.progress = [&progress](double done) { progress.Update(done); };
  demo::DemoSummary summary = demo::BuildDemoCompany(options);
  progress.Finish();
  return summary;
}

int DemoCommand(const Args& args, const Context&) {
  ParsedArgs parsed = Parse(args, kDemoOptions);
  if (parsed.Has("help")) {
    std::printf(
        "usage: trellin demo [--scale N] [--seed S] [--country NZ|AU] [-o FILE | --db URL]\n\n"
        "Builds the demo company: some years of a small trading business's books, up to the end\n"
        "of last month (or of --present's month). The same options on the same day give the\n"
        "same file.\n\n%s",
        OptionsHelp(kDemoOptions).c_str());
    return kExitOk;
  }
  if (!parsed.Positional().empty()) throw UsageError("demo takes no arguments");
  int scale = static_cast<int>(WholeNumber("scale", parsed.Value("scale").value_or("1")));
  if (scale < 1 || scale > 200) throw UsageError("--scale must be from 1 to 200");
  auto seed = static_cast<std::uint64_t>(WholeNumber("seed", parsed.Value("seed").value_or("1")));
  std::string country = parsed.Value("country").value_or("NZ");
  for (char& c : country) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  if (country != "NZ" && country != "AU") throw UsageError("--country must be NZ or AU");
  Date present = LastMonthEnd();
  if (auto text = parsed.Value("present")) {
    std::optional<Date> given = ParseDateText(*text);
    if (!given) throw UsageError("--present takes a date such as 31/10/2026, not '" + *text + "'");
    present = *given;
  }
  const std::optional<std::string> server = parsed.Value("db");
  if (server && parsed.Value("output"))
    throw UsageError("demo takes -o FILE or --db URL, not both");
  if (server && !data::IsPostgresUrl(*server)) {
    throw UsageError("--db takes postgresql://user@host/dbname; -o FILE writes a company file");
  }
  // On a server the company is built as a file in a folder of its own, then copied there.
  std::optional<Scratch> scratch;
  // Connected first: a server that cannot be reached is said at once, not after the build.
  std::optional<data::PgConnection> target;
  if (server) {
    target.emplace(*server);
    scratch.emplace();
  }
  std::filesystem::path path = server ? scratch->File()
                               : parsed.Value("output")
                                   ? std::filesystem::path(*parsed.Value("output"))
                                   : CompanyPath(std::nullopt);

  auto start = std::chrono::steady_clock::now();
  demo::DemoSummary summary;
  try {
    summary = BuildDemo(path, scale, seed, country, present);
  } catch (const std::invalid_argument& e) {
    throw Error(ErrorKind::Input, e.what());
  } catch (const std::filesystem::filesystem_error& e) {
    throw Error(ErrorKind::CompanyFile, e.what());
  }
  std::string where = path.string();
  if (target) {
    (void)data::CopyCompanyToPostgres(path.string(), *target);
    where = target->Name();
  }
  double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  std::printf(
      "demo company: %lld parties, %lld transactions, %lld GL lines, %d years to %s; %.1fs; %s\n",
      static_cast<long long>(summary.parties), static_cast<long long>(summary.transactions),
      static_cast<long long>(summary.gl_lines), summary.financial_years,
      summary.present.ToIso().c_str(), seconds, where.c_str());
  return kExitOk;
}

}  // namespace trellin::cli
