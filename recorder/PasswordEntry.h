#pragma once

struct RecorderOptions;

/// Reads a line from the standard input and keeps it as the password of the camera that the options name. The
/// program's exit status.
int keepPassword(const RecorderOptions& options);
