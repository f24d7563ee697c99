#pragma once
// The forms the menu can open.

#include <map>

#include "app/desktop.h"

namespace korvel::app {

// The child forms of the menu that exist, by name.
const std::map<QString, FormFactory>& desktop_forms();

}  // namespace korvel::app
