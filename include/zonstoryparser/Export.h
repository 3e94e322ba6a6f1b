#pragma once

/// Marks what libzonstoryparser exports; everything else stays hidden.
#define ZONSTORYPARSER_API __attribute__((visibility("default")))

/// Takes a private member of an exported class out of the exports again.
#define ZONSTORYPARSER_LOCAL __attribute__((visibility("hidden")))
