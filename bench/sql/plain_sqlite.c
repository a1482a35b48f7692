/* What a caller of SQLite can't do without: runs a query and copies every value, and each column's name once.
   sql_bench_plain DATABASE STATEMENT ROUNDS */

#include <sqlite3.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

struct value {
  int type;
  union {
    sqlite3_int64 whole;
    double real;
    char* text;
  };
};

int main(int argc, char** argv) {
  sqlite3* database;
  sqlite3_stmt* statement;
  if (argc < 4 || sqlite3_open_v2(argv[1], &database, SQLITE_OPEN_READONLY, NULL) != SQLITE_OK) return 2;
  for (int round = 0; round < atoi(argv[3]); ++round) {
    if (sqlite3_prepare_v2(database, argv[2], -1, &statement, NULL) != SQLITE_OK) {
      fprintf(stderr, "%s\n", sqlite3_errmsg(database));
      return 1;
    }
    const int columns = sqlite3_column_count(statement);
    char** names = malloc((size_t)columns * sizeof *names);
    for (int i = 0; i < columns; ++i) names[i] = strdup(sqlite3_column_name(statement, i));
    size_t room = 1024, count = 0;
    struct value* values = malloc(room * sizeof *values);
    while (sqlite3_step(statement) == SQLITE_ROW) {
      for (int i = 0; i < columns; ++i) {
        if (count == room) values = realloc(values, (room *= 2) * sizeof *values);
        struct value* value = &values[count++];
        value->type = sqlite3_column_type(statement, i);
        if (value->type == SQLITE_INTEGER) value->whole = sqlite3_column_int64(statement, i);
        else if (value->type == SQLITE_FLOAT) value->real = sqlite3_column_double(statement, i);
        else if (value->type == SQLITE_TEXT) value->text = strdup((const char*)sqlite3_column_text(statement, i));
      }
    }
    sqlite3_finalize(statement);
    for (size_t i = 0; i < count; ++i) {
      if (values[i].type == SQLITE_TEXT) free(values[i].text);
    }
    free(values);
    for (int i = 0; i < columns; ++i) free(names[i]);
    free(names);
  }
  sqlite3_close(database);
  return 0;
}
