#pragma once

/// Bodies of identifiers and signatures (signing_functions.cpp), and of downloads, archives and files
/// (archive_functions.cpp).

int createCompressedGuidString();
int signStringOf();
int verifyStringOf();

int downloadFileOf();
int extractZip();
int createZip();
int getTempPath();
int isFileReadOnly();
