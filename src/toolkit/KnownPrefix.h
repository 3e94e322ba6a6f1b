#pragma once

#include <string>

namespace zonstoryparser {

/// The prefix that the toolkit has registered for a namespace, with its trailing colon; empty when it knows none.
///
/// The last answers are remembered on each thread: every path of a field asks, and the toolkit, which locks and copies
/// for every look-up, never changes the prefix of a namespace while it runs.
std::string KnownPrefix(const char* namespaceURI);

/// The toolkit has ended, and its namespaces with it.
void ForgetKnownPrefixes();

} // namespace zonstoryparser
