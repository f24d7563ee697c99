#include "app/forms.h"

namespace korvel::app {

const std::map<QString, FormFactory>& desktop_forms() {
    static const std::map<QString, FormFactory> forms;
    return forms;
}

}  // namespace korvel::app
