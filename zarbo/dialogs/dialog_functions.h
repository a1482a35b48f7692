#pragma once

/// Bodies that open dialogs: user_options.cpp, safe_continue.cpp, text_editor.cpp.

int editUserOptions();
int kvSafeContinue();
int edEditMultilineText();
