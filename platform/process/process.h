#pragma once

#include <string>

/// What the operating system knows of the running process and its machine.

/// Tells other programs, by a lock under this name, that the process is there; nothing is kept or
/// reported, and the mark goes when the calling library or the process ends.
void markProcess(const std::wstring& name);

/// The running process's own number.
int processNumber();

/// Number of the calling thread's last system error, 0 when there was none; and the way to forget it.
unsigned lastSystemError();
void clearSystemError();
