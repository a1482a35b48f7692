#pragma once

#include <string>

#include "host/app/options.h"

namespace host {

bool isDxf(const std::string& file);
/// True when the file's ending names a kind that `writeOutput` can write.
bool canOutput(const std::string& file);
/// Writes the current drawing as `options.output`, whole or not at all. False with `problem` set, which
/// names the file.
bool writeOutput(const Options& options, std::string& problem);

}  // namespace host
