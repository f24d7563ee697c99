#include "app/forms.h"

#include "check/data_check_form.h"
#include "payroll/salary_capture_form.h"
#include "staff/staff_register_form.h"

namespace korvel::app {

const std::map<QString, FormFactory>& desktop_forms() {
    static const std::map<QString, FormFactory> forms = {
        {QStringLiteral("sk411_prg"),
         [](shell::Session& session, QWidget* parent) -> QWidget* {
             auto* form = new staff::StaffRegisterForm(session, session.educator_flag, parent);
             if (!form->load()) {
                 delete form;
                 return nullptr;
             }
             return form;
         }},
        {QStringLiteral("data_check"), check::open_data_check},
        {QStringLiteral("sk461_prg"), payroll::open_salary_capture},
    };
    return forms;
}

}  // namespace korvel::app
