#pragma once

/// Marks what libzonmetadata exports; everything else stays hidden.
#define ZONMETADATA_API __attribute__((visibility("default")))
