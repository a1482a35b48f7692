#pragma once

/// Bodies of identifiers and signatures (signing_functions.cpp), of downloads, archives and what is asked of
/// files (archive_functions.cpp), and of what is done with files (file_functions.cpp).

int createCompressedGuidString();
int signStringOf();
int verifyStringOf();

int downloadFileOf();
int extractZip();
int createZip();
int getTempPath();
int isFileReadOnly();

int zbFcopy();
int zbFcopyIfChanged();
int zbFmove();
int zbFdelete();
int zbFdir();
int zbMkdir();
int zbRmdir();
