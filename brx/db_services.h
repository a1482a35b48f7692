#pragma once

#include "brx/db_database.h"

/// What the application gives to its databases.
class BRX_API AcDbHostApplicationServices {
 public:
  enum FindFileHint { kDefault = 0, kFontFile, kCompiledShapeFile, kTrueTypeFontFile, kXRefDrawing = 6 };
  virtual ~AcDbHostApplicationServices() = default;
  virtual AcDbDatabase* workingDatabase() const = 0;
  virtual void setWorkingDatabase(AcDbDatabase* database) = 0;
  /// The full path of a file that lies in the current folder, beside the drawing or on the support
  /// path. `eFileNotFound`; `eBufferTooSmall` when `length` characters, the NUL among them, don't do.
  virtual Acad::ErrorStatus findFile(ACHAR* path, int length, const ACHAR* name,
                                     AcDbDatabase* database = nullptr, FindFileHint hint = kDefault) = 0;
};
AcDbHostApplicationServices* acdbHostApplicationServices();
