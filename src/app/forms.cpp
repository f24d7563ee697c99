#include "app/forms.h"

#include "check/data_check_form.h"
#include "governing/member_entry.h"
#include "governing/member_register_form.h"
#include "payroll/salary_capture_form.h"
#include "staff/staff_register_form.h"
#include "yearend/staff_export_form.h"
#include "yearend/year_end_form.h"

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
        {QStringLiteral("sk4_export"), yearend::open_staff_export},
        {QStringLiteral("evj_personeel"),
         [](shell::Session& session, QWidget* parent) -> QWidget* {
             if (auto* qt = dynamic_cast<ui::QtDialogs*>(&session.dialogs())) {
                 yearend::register_year_choice_form(*qt);
             }
             auto* menu = qobject_cast<MenuForm*>(parent);
             return yearend::open_year_end(session, parent, [menu](const QString& year) {
                 if (menu != nullptr) {
                     menu->behaviour().rekords_jaar_lys_click(year);
                     menu->refresh();
                 }
             });
         }},
        {QStringLiteral("sk411_bl_prg"),
         [](shell::Session& session, QWidget* parent) -> QWidget* {
             return new governing::MemberRegisterForm(session, parent);
         }},
        {QStringLiteral("sk461_prg"), payroll::open_salary_capture},
    };
    return forms;
}

}  // namespace korvel::app
