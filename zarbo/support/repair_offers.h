#pragma once

/// Offers to download a repair installer when a component of the machine is missing.

/// Takes the result of a modal dialog and gives it back. -1 and 3 mean that the dialog could not be
/// made; then the user is asked first.
int dialogGuard(int dialogResult);
/// For database drivers that can't be loaded.
void databaseDriverFailure();
