#pragma once

class AcDbDatabase;

/// Database of the current document; null when none is open.
AcDbDatabase* currentDatabase();
