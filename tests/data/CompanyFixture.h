#pragma once
// Small company files for the database tests: the settings table and tables of the test's own.

#include <sqlite3.h>

#include <stdexcept>
#include <string>

namespace trellin::data::testing {

// Runs `sql` on the file at `path` (created when missing) in WAL mode, as the accounts
// application would write it.
inline void Write(const std::string& path, const std::string& sql) {
  sqlite3* db = nullptr;
  sqlite3_open(path.c_str(), &db);
  char* message = nullptr;
  int rc = sqlite3_exec(db, ("PRAGMA journal_mode=WAL;" + sql).c_str(), nullptr, nullptr, &message);
  std::string text = message != nullptr ? message : "";
  sqlite3_free(message);
  sqlite3_close(db);
  if (rc != SQLITE_OK) throw std::runtime_error("test setup failed: " + text);
}

// A company file with settings and a table `Line` holding one column of each declared type.
inline void MakeCompany(const std::string& path) {
  Write(path,
        "CREATE TABLE CompanySetting (Section TEXT COLLATE NOCASE NOT NULL, Key TEXT COLLATE "
        "NOCASE NOT NULL, Value TEXT, PRIMARY KEY (Section, Key));"
        "INSERT INTO CompanySetting VALUES ('Defaults','Branch','HO'),('Tax','Rate','15'),"
        "('Options','Blank',NULL);"
        "CREATE TABLE Line (Id INTEGER PRIMARY KEY, Code TEXT COLLATE NOCASE, Amount MONEY, "
        "Posted DATE, Cleared BOOLEAN, Rate DOUBLE);"
        "INSERT INTO Line VALUES (1,'A',123400,'2024-03-31',1,0.15),"
        "(2,'B',-5,'2024-04-01 09:30:00',0,2.5),(3,'a',NULL,NULL,NULL,NULL);");
}

}  // namespace trellin::data::testing
