#pragma once

#include "fuzz/damage.h"

namespace tessara::test {

// Each damages a sound file of its kind, opens it and takes everything out of it. Whatever comes out is to be an error
// in words that name the file, or sound data; anything else ends the process. The result tells whether it opened.

/// An elevation file: GeoTIFF, ASCII grid or PNG.
bool UseDamagedElevation(Damage damage);

/// A picture: PNG, JPEG, BMP, Targa or Photoshop.
bool UseDamagedImage(Damage damage);

/// A project, its bytes or the values in it, up to a drawn frame.
bool UseDamagedProject(Damage damage);

/// A texture database, its bytes or the values in it.
bool UseDamagedDatabase(Damage damage);

/// A store of the class registry, or a module's registration script.
bool UseDamagedRegistry(Damage damage);

}  // namespace tessara::test
