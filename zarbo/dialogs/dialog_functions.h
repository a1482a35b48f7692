#pragma once

/// Bodies that open dialogs: user_options.cpp, safe_continue.cpp, text_editor.cpp,
/// submit_bug_function.cpp.

int editUserOptions();
int kvSafeContinue();
int edEditMultilineText();
int kvSubmitBug();
