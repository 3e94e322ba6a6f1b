#pragma once

/// Marks what libzonscreenplay exports; everything else stays hidden.
#define ZONSCREENPLAY_API __attribute__((visibility("default")))
