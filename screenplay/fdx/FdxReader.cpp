#include "fdx/FdxReader.h"

namespace zonscreenplay {

FdxReader::FdxReader(const XmlDriver& driver) : mDriver(driver), mBuilder(driver.Name(), driver.Options()) {}

void FdxReader::Start(const zoncore::UString&, const zoncore::AttributeMap&) {}

void FdxReader::End(const zoncore::UString&) {}

void FdxReader::Characters(const zoncore::UString&) {}

Screenplay FdxReader::Finish() {
    return mBuilder.Finish(Format::FDX);
}

} // namespace zonscreenplay
