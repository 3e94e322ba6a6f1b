#pragma once

/// Marks what libzoncore exports; everything else stays hidden.
#define ZONCORE_API __attribute__((visibility("default")))
