#pragma once

#include "tests/support/jet_writer.h"

/// A Jet file with a value of every type, rules, indexes, relations, queries, and things that don't come
/// over.
jet_writer::File sampleJetFile();

/// A table "Many" of eight columns.
jet_writer::Table manyRows(int count);
