// Writes the sample Jet file, with a table of so many rows when a number is given: make_jet_sample FILE
// [ROWS]

#include <cstdio>
#include <cstdlib>

#include "tests/mdb/sample_file.h"

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  jet_writer::File file = sampleJetFile();
  if (argc > 2) file.add(manyRows(std::atoi(argv[2])));
  const auto bytes = file.finish();
  FILE* out = std::fopen(argv[1], "wb");
  if (!out) return 1;
  const bool good = std::fwrite(bytes.data(), 1, bytes.size(), out) == bytes.size();
  return std::fclose(out) == 0 && good ? 0 : 1;
}
