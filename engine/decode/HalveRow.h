#pragma once

#include <cstdint>

/// Writes `width` pixels, each the mean of four of two rows of bytes, which are twice as wide.
void halveRow(const uint8_t* upper, const uint8_t* lower, uint8_t* target, int width);
