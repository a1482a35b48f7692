#pragma once

/// Bodies of the database family, beside those that connections.h and failure.h declare.

// record_functions.cpp
int zbTable();
int zbTop();
int zbBottom();
int zbSkip();
int zbSeek();
int zbGetrec();
int zbCount();
int zbCloseTable();
int zbCloseallTables();
int zbCurrentTable();
int zbCurrentIndex();

// change_functions.cpp
int zbAppend();
int zbAppendWithindex();
int zbReplace();
int zbDelete();

// sql_functions.cpp
int zbSql();
int zbSqlNil();
int zbSqlError();
int zbCommand();
int zbQuery();
int zbCreateQuery();

// schema_functions.cpp
int zbCreateDb();
int zbCreateTable();
int zbModifyTable();
int zbRenameTable();
int zbDeleteTable();
int zbStructure();
int zbListTables();
int zbListIndexes();
int zbAttributes();
int zbExist();
int zbFieldRequired();
int zbRelationExists();
int zbRelationDelete();
int zbCreateIndex();
int zbLinkTable();
int zbOnlyIn32Bit();

// connections.cpp
int zbGetVersion();
