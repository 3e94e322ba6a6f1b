#pragma once

/// Marks what libzoncore exports; everything else stays hidden.
#define ZONCORE_API __attribute__((visibility("default")))

/// Takes a private member of an exported class out of the exports again.
#define ZONCORE_LOCAL __attribute__((visibility("hidden")))
