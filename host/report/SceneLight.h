#pragma once

#include <string_view>

namespace zonstory {

enum class Place { Interior, Exterior, Both, Untold };
enum class Daylight { Day, Night, Twilight, Untold };

/// Where a scene plays and in which light, as the colours of a strip board tell them.
struct SceneLight {
    Place place = Place::Untold;
    Daylight light = Daylight::Untold;
};

/// Reads a heading for people, not for metadata: "INT/EXT. KIOSK - EARLY MORNING" is both, by day. Words of English,
/// German, French, Italian and Spanish are known; whatever else a heading says is untold.
/// @param heading  UTF-8.
SceneLight LightOf(std::string_view heading);

/// "Interior", "Interior and exterior", "Night" ...
const char* Name(Place place);
const char* Name(Daylight light);

} // namespace zonstory
