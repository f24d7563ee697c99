#include "app/forms.h"

#include "check/data_check_form.h"
#include "governing/member_entry.h"
#include "governing/member_register_form.h"
#include "staff/staff_register_form.h"

namespace korvel::app {

const std::map<QString, FormFactory>& desktop_forms() {
    static const std::map<QString, FormFactory> forms = {
        {QStringLiteral("sk411_prg"),
         [](shell::Session& session, QWidget* parent) -> QWidget* {
             auto* form = new staff::StaffRegisterForm(session, session.educator_flag, parent);
             form->behaviour().copy_to_governing_body = governing::copy_to_governing_body;
             if (!form->load()) {
                 delete form;
                 return nullptr;
             }
             return form;
         }},
        {QStringLiteral("data_check"), check::open_data_check},
        {QStringLiteral("sk411_bl_prg"),
         [](shell::Session& session, QWidget* parent) -> QWidget* {
             return new governing::MemberRegisterForm(session, parent);
         }},
    };
    return forms;
}

}  // namespace korvel::app
