#pragma once

#include <zip.h>

#include <string>

#include "platform/archive/archive_writer.h"

namespace platform {

/// Extracts into a hidden folder inside the target folder, which is made when it is missing, and moves
/// all into place when all is there. On failure `reason` says why and the target is as it was.
bool extractArchive(zip_t* archive, const std::string& folder, const ExtractLimits& limits,
                    std::string& reason);

}  // namespace platform
