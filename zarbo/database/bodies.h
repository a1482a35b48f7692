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
