// Runs one report from a company file to a PDF through the installed library:
//   hello_report COMPANY.db OUT.pdf [KEY]
#include <cstdio>
#include <exception>

#include "platform/host/run/ReportService.h"
#include "platform/host/run/RunReport.h"

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: hello_report COMPANY.db OUT.pdf [KEY]\n");
    return 2;
  }
  try {
    auto service = trellin::host::ReportService::Open(argv[1]);
    trellin::host::RunRequest request;
    request.key = argc > 3 ? argv[3] : "CustomerTypeList";
    request.output = argv[2];
    trellin::host::RunResult result = trellin::host::RunReportToFile(*service, request);
    std::printf("%s: %d pages, %lld rows\n", request.key.c_str(), result.pages,
                static_cast<long long>(result.rows));
    return result.completed && result.errors.empty() ? 0 : 1;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "hello_report: %s\n", e.what());
    return 1;
  }
}
