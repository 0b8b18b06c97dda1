#pragma once

/// Lets a screen reader know the scale of a day, from the first call on, as a slider whose value is told as a
/// time; a value that the reader sets counts as one that the thumb was released at.
void InstallScaleAccessible();
