#pragma once
// Writing a new company file: the one place that creates or writes one (the demo generator).

#include <sqlite3.h>

#include <memory>
#include <string>

namespace trellin::data {

// A company file being built. The rows go into `path + ".tmp"`; Commit() closes it and renames
// it to `path` (replacing a file there). Destroyed without Commit(), the temporary file is
// removed, so a failed build leaves nothing behind and an older file at `path` untouched.
class CompanyFileWriter {
 public:
  CompanyFileWriter(const CompanyFileWriter&) = delete;
  CompanyFileWriter& operator=(const CompanyFileWriter&) = delete;
  ~CompanyFileWriter();

  // The open connection, for the writer's own statements. Owned here; null after Commit().
  [[nodiscard]] sqlite3* Handle() const { return db_; }
  [[nodiscard]] const std::string& Path() const { return path_; }
  // Checkpoints, closes and renames into place. Throws DatabaseError when any step fails (the
  // temporary file is then removed).
  void Commit();

 private:
  friend std::unique_ptr<CompanyFileWriter> CreateCompanyFile(const std::string& path);
  CompanyFileWriter(std::string path, sqlite3* db) : path_(std::move(path)), db_(db) {}
  void Discard();

  std::string path_;
  sqlite3* db_;
};

// A number that names this build's company schema: a file created by CreateCompanyFile holds it
// (SQLite's user_version), so a file made for another schema can be told without reading it.
[[nodiscard]] int CompanySchemaStamp();

// The schema stamp `path` holds; 0 for a file created otherwise, or one that cannot be read.
[[nodiscard]] int ReadCompanySchemaStamp(const std::string& path);

// Creates `path + ".tmp"` afresh with the company schema applied, in WAL mode. Throws
// DatabaseError naming the path when the file cannot be created or the schema fails.
[[nodiscard]] std::unique_ptr<CompanyFileWriter> CreateCompanyFile(const std::string& path);

}  // namespace trellin::data
