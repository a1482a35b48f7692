/* What a caller of SQLite can't do without: runs a query and copies every value with its column's name.
   sql_bench_plain DATABASE STATEMENT */

#include <sqlite3.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

struct value {
  int type;
  char* name;
  union {
    sqlite3_int64 whole;
    double real;
    char* text;
  };
};

static double now(void) {
  struct timespec t;
  clock_gettime(CLOCK_MONOTONIC, &t);
  return 1e3 * (double)t.tv_sec + 1e-6 * (double)t.tv_nsec;
}

int main(int argc, char** argv) {
  sqlite3* database;
  sqlite3_stmt* statement;
  if (argc < 3 || sqlite3_open_v2(argv[1], &database, SQLITE_OPEN_READONLY, NULL) != SQLITE_OK) return 2;
  for (int round = 0; round < 5; ++round) {
    const double start = now();
    if (sqlite3_prepare_v2(database, argv[2], -1, &statement, NULL) != SQLITE_OK) {
      fprintf(stderr, "%s\n", sqlite3_errmsg(database));
      return 1;
    }
    const int columns = sqlite3_column_count(statement);
    size_t room = 1024, count = 0;
    struct value* values = malloc(room * sizeof *values);
    while (sqlite3_step(statement) == SQLITE_ROW) {
      for (int i = 0; i < columns; ++i) {
        if (count == room) values = realloc(values, (room *= 2) * sizeof *values);
        struct value* value = &values[count++];
        value->type = sqlite3_column_type(statement, i);
        value->name = strdup(sqlite3_column_name(statement, i));
        if (value->type == SQLITE_INTEGER) value->whole = sqlite3_column_int64(statement, i);
        else if (value->type == SQLITE_FLOAT) value->real = sqlite3_column_double(statement, i);
        else if (value->type == SQLITE_TEXT) value->text = strdup((const char*)sqlite3_column_text(statement, i));
      }
    }
    sqlite3_finalize(statement);
    printf("plain SQLite, every value copied: %.0f ms, %zu values\n", now() - start, count);
    for (size_t i = 0; i < count; ++i) {
      free(values[i].name);
      if (values[i].type == SQLITE_TEXT) free(values[i].text);
    }
    free(values);
  }
  sqlite3_close(database);
  return 0;
}
