#pragma once

/// Bodies of the functions on the keys and values that the application hangs on entities.

int zbXdputList();
int zbXdget();
int zbXdgetList();
int zbXdgetAll();
