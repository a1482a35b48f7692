// zarbo-mdb: reads genuine Jet files (.mdb, .accdb): tells what is in them, makes a Zarbo database of one,
// writes tables as CSV.

#include <CLI/CLI.hpp>
#include <cstdio>
#include <string>

#include "engine/definition.h"
#include "engine/mdb/import.h"
#include "engine/mdb/jet_schema.h"
#include "engine/mdb/jet_table.h"
#include "platform/terminal/terminal.h"
#include "tools/zarbo_mdb/csv.h"
#include "tools/zarbo_mdb/guarded_run.h"

namespace {

struct Command {
  std::string source, target, table;
  bool keepGoing = false, quiet = false, system = false;
};

/// A bar that grows on a terminal, and nothing elsewhere.
class ProgressBar {
 public:
  explicit ProgressBar(bool wanted) : wanted_(wanted && platform::isTerminal(platform::Stream::errors)) {}
  ~ProgressBar() { clear(); }
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  void show(size_t done, size_t all) {
    constexpr size_t width = 40;
    const size_t filled = all ? std::min(width, done * width / all) : 0;
    if (!wanted_) return;
    std::fprintf(stderr, "\r[%s%s] %zu of %zu rows", std::string(filled, '#').c_str(),
                 std::string(width - filled, '.').c_str(), done, all);
    shown_ = true;
  }
  void clear() {
    if (shown_) std::fprintf(stderr, "\r\033[K");
    shown_ = false;
  }

 private:
  bool wanted_, shown_ = false;
};

int runShown(const Command& command, const std::function<int(Report&)>& work) {
  ProgressBar bar(!command.quiet);
  const ReportView view{[&](size_t done, size_t all) { bar.show(done, all); },
                        [&](const std::string& text) {
                          bar.clear();
                          if (!command.quiet) std::fprintf(stderr, "%s\n", text.c_str());
                        },
                        [&](const std::string& text) {
                          bar.clear();
                          std::fprintf(stderr, "zarbo-mdb: %s: %s\n", command.source.c_str(), text.c_str());
                        }};
  return runGuarded(work, view);
}

int runImport(const Command& command) {
  return runShown(command, [&](Report& report) {
    mdb::ImportOptions options;
    options.keepGoing = command.keepGoing;
    size_t losses = 0;
    const mdb::ImportProgress progress{[&](const std::string& table, size_t rows, size_t all) {
                                         report.at("the table '" + table + "'");
                                         report.progress(rows, all);
                                       },
                                       [&](const std::string& what) {
                                         ++losses;
                                         report.note(what);
                                       }};
    report.at("the catalog");
    mdb::ImportResult result;
    try {
      result = mdb::importJetFile(command.source, command.target, options, progress);
    } catch (const jet::Failure& failure) {
      throw mdb::JetError(failure.error.text);
    }
    if (!command.quiet)
      std::printf("%s: %zu tables, %zu rows, %zu relations, %zu queries%s\n", command.target.c_str(),
                  result.tables, result.rows, result.relations, result.queries,
                  losses ? "; what doesn't come over is told above" : "; everything came over");
    return 0;
  });
}

void printIndex(const jet::Index& index) {
  std::string columns;
  for (const auto& column : index.columns)
    columns += (columns.empty() ? "" : ", ") + column.name + (column.descending ? " DESC" : "");
  std::printf("  index %s (%s)%s%s%s%s\n", index.name.c_str(), columns.c_str(),
              index.primary ? " primary" : "", index.unique && !index.primary ? " unique" : "",
              index.required ? " required" : "", index.ignoreNull ? " ignorenull" : "");
}

void printTable(mdb::JetFile& file, const mdb::JetObject& object) {
  mdb::JetTable table(file, object);
  std::printf("\ntable %s: %zu rows\n", object.name.c_str(), table.declaredRows());
  for (const jet::Column& column : table.shape().columns)
    std::printf("  %s: %s\n", column.name.c_str(), describeColumn(column).c_str());
  for (const jet::Index& index : table.shape().indexes) printIndex(index);
  for (const mdb::JetTable::Rule& rule : table.rules())
    std::printf("  rule %s%s%s\n", rule.column.c_str(), rule.column.empty() ? "" : ": ",
                rule.condition.c_str());
  for (const std::string& loss : table.losses()) std::printf("  not imported: %s\n", loss.c_str());
}

int runInfo(const Command& command) {
  return runShown(command, [&](Report& report) {
    report.at("the catalog");
    mdb::JetFile file(command.source);
    std::printf("%s: %s\n", command.source.c_str(), file.versionName());
    for (const mdb::JetObject& object : file.objects()) {
      if (object.kind != MDB_TABLE || (object.system && !command.system)) continue;
      report.at("the table '" + object.name + "'");
      try {
        printTable(file, object);
      } catch (const mdb::JetError& error) {
        report.error("the table '" + object.name + "' can't be read: " + error.what());
      }
    }
    report.at("the relations");
    for (const mdb::JetRelation& each : mdb::readRelations(file)) {
      std::printf("\nrelation %s: %s to %s%s%s%s\n", each.relation.name.c_str(), each.relation.table.c_str(),
                  each.relation.foreignTable.c_str(), each.enforced ? "" : ", not enforced",
                  each.relation.cascadeUpdate ? ", cascades updates" : "",
                  each.relation.cascadeDelete ? ", cascades deletes" : "");
    }
    for (const std::string& link : mdb::describeLinks(file)) std::printf("\nlinked table %s\n", link.c_str());
    report.at("the queries");
    for (const mdb::JetQuery& query : mdb::readQueries(file))
      std::printf("\nquery %s: %s\n", query.name.c_str(),
                  query.failure.empty() ? query.sql.c_str() : ("not imported: " + query.failure).c_str());
    return 0;
  });
}

int runExport(const Command& command) {
  return runShown(command, [&](Report& report) {
    report.at("the catalog");
    mdb::JetFile file(command.source);
    const mdb::JetObject* object = file.findTable(command.table);
    if (!object) throw mdb::JetError("there is no table '" + command.table + "'");
    report.at("the table '" + object->name + "'");
    mdb::JetTable table(file, *object);
    const auto& columns = table.shape().columns;
    std::string line;
    for (const jet::Column& column : columns) line += (line.empty() ? "" : ",") + csvText(column.name);
    std::puts(line.c_str());
    constexpr size_t stepOfProgress = 4096;
    for (std::vector<Stored> row; table.next(row);) {
      line.clear();
      for (size_t i = 0; i < row.size(); ++i) {
        if (i > 0) line += ',';
        line += csvField(row[i], columns[i].type);
      }
      line += '\n';
      if (std::fwrite(line.data(), 1, line.size(), stdout) != line.size())
        throw mdb::JetError("the output can't be written");
      if (table.rowsRead() % stepOfProgress == 0) report.progress(table.rowsRead(), table.declaredRows());
    }
    for (const std::string& loss : table.losses()) report.note("Not exported: " + loss + ".");
    for (const auto& [what, times] : table.changedValues())
      report.note("Changed, " + std::to_string(times) + " times: " + what + ".");
    if (const std::string missing = table.missing(); !missing.empty())
      throw mdb::JetError("the table '" + object->name + "': " + missing);
    return 0;
  });
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app("Reads Jet databases (.mdb, .accdb): tells what they hold, makes Zarbo databases of them.",
               "zarbo-mdb");
  app.require_subcommand(1);
  Command command;
  auto* import = app.add_subcommand("import", "make a Zarbo database of a Jet file");
  import->add_option("SOURCE", command.source, "the Jet file; it is only read")->required();
  import->add_option("TARGET", command.target, "the new database")->required();
  import->add_flag("--keep-going", command.keepGoing, "leave out what can't be read, and say so");
  import->add_flag("--quiet", command.quiet, "print errors only");
  auto* info = app.add_subcommand("info", "tell what a Jet file holds");
  info->add_option("FILE", command.source, "the Jet file")->required();
  info->add_flag("--system", command.system, "the system's tables too");
  auto* exporting = app.add_subcommand("export", "write a table as CSV to standard output");
  exporting->add_option("FILE", command.source, "the Jet file")->required();
  exporting->add_option("TABLE", command.table, "the table's name")->required();
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    const int status = app.exit(error);
    return status == 0 ? 0 : 2;
  }
  if (import->parsed()) return runImport(command);
  return info->parsed() ? runInfo(command) : runExport(command);
}
