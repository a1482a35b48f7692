#pragma once

/// Bodies of the small services of the database family: beeps and boxes (host_utilities.cpp), files
/// (host_utilities_files.cpp), extended data of entities (extended_data.cpp).

int zbBeep();
int zbMessageBeep();
int zbMessageBox();
int zbRandom();
int zbGetVersion();

int zbFcopy();
int zbFcopyIfChanged();
int zbFmove();
int zbFdelete();
int zbFdir();
int zbMkdir();
int zbRmdir();

int zbXdputList();
int zbXdget();
int zbXdgetList();
int zbXdgetAll();
