#pragma once

/// Marks what libzonmetadata exports; everything else stays hidden.
#define ZONMETADATA_API __attribute__((visibility("default")))

/// Takes a private member of an exported class out of the exports again.
#define ZONMETADATA_LOCAL __attribute__((visibility("hidden")))
