#pragma once

/// Bodies of the functions that give the application folders, shell and help (host_windows_shell.cpp),
/// settings' sections and machine (host_windows.cpp), file and folder choosers
/// (host_windows_choosers.cpp), and the host's window and status bar (host_windows_frame.cpp).

/// Whether the main window takes what the user does.
void enableMainWindow(bool enabled);

int kvShGetFolderPath();
int kvShOpenFolderAndSelect();
int kvShellExecute();
int kvShowHelp();

int regEnumKey();
int screenWidth();
int screenHeight();
int getComputerName();
int pathIsNetworkPath();

int xFolderDialog();
int cFileDialog();

int setStatusBarProgressMeter();
int setStatusBarProgressMeterPos();
int restoreStatusBar();
int kvEnableAutoCadWindow();
int kvDisableAutoCadWindow();
int kvGetAcadWindowText();
int kvSetAcadWindowText();
