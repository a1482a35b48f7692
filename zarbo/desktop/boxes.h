#pragma once

/// Bodies of beeps and message boxes.

int zbBeep();
int zbMessageBeep();
int zbMessageBox();
