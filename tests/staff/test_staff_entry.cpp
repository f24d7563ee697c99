#include <gtest/gtest.h>

#include <shapefil.h>

#include <QFile>
#include <map>

#include "attendance/attendance_register.h"
#include "shell/helpers.h"
#include "shell/staff_person.h"
#include "staff/appointments.h"
#include "staff/detail_chooser.h"
#include "staff/experience.h"
#include "staff/staff_entry.h"
#include "staff/staff_register.h"
#include "staff_fixture.h"

using namespace korvel::store;
using namespace korvel::staff;
using korvel::testing::add_person;
using korvel::testing::read_file;
using korvel::testing::StaffTree;
using korvel::ui::Answer;
using korvel::ui::ChildForm;
using korvel::ui::Shown;

namespace {

const QString kCompulsory = QStringLiteral("VERPLIGTE VELDE ONVOLTOOID - SIEN ROOI KANTSKRIFTE...");

class Entry : public ::testing::Test {
  protected:
    void SetUp() override {
        tree.session.fixed_today = QDate(2026, 11, 23);
        add_person(tree.session, {.post = "10",
                                  .surname = "VAN WYK",
                                  .names = "PIETER",
                                  .id = "8001015009087",
                                  .gender = "M"});
        add_person(tree.session,
                   {.post = "A1", .surname = "MOKOENA", .names = "THABO", .klas = "PSS"});
    }
    std::unique_ptr<StaffRegister> open_register(bool educators = true) {
        auto reg = std::make_unique<StaffRegister>(tree.session, educators);
        reg->user = "ANNA";
        reg->form_load();
        return reg;
    }
    // Opens the row of a post number and plays the entry form.
    void edit(StaffRegister& reg, const QString& post,
              const std::function<void(StaffEntry&)>& play) {
        tree.dialogs.on_form("sk411_inlees", [&](ChildForm& f) {
            auto& e = static_cast<StaffEntry&>(f);
            e.form_activate();
            play(e);
        });
        for (std::size_t i = 0; i < reg.prs_grid.rows.size(); ++i) {
            if (reg.prs_grid.rows[i].cells[kColPost] == post) {
                reg.prs_grid_click(static_cast<int>(i));
                return;
            }
        }
        ADD_FAILURE() << "no row for " << post.toStdString();
    }
    // Opens a new record and plays the entry form.
    void add_new(StaffRegister& reg, const std::function<void(StaffEntry&)>& play) {
        tree.dialogs.on_form("sk411_inlees", [&](ChildForm& f) {
            auto& e = static_cast<StaffEntry&>(f);
            e.form_activate();
            play(e);
        });
        reg.task_options_click(1);
    }
    // The master record of a post number as it is on disk now.
    Record master(const QString& post) {
        Record out(PRSALG);
        tree.session.scan_records(Code::PRSALG, [&](int, Record& r) {
            if (r.text(PRSALG["PA_POS_NR"]).trimmed() == post) {
                out = r;
            }
        });
        return out;
    }
    Record additional(const QString& post) {
        Record out(PRSADD);
        tree.session.open_file(Code::PRSADD);
        tree.session.scan_records(Code::PRSADD, [&](int, Record& r) {
            if (r.text(PRSADD["PD_POS_NR"]).trimmed() == post) {
                out = r;
            }
        });
        return out;
    }
    // Fills what every educator needs, by the lists as a user clicks them.
    static void complete(StaffEntry& e) {
        e.prs_data[2] = "NEL";
        e.prs_data[3] = "ANNA MARIA";
        e.prs_data[8] = "8503120123088";
        e.list_click(EntryList::ras_lys, 3);
        e.list_click(EntryList::taal_lys, 0);
        e.list_click(EntryList::reqv_lys, 4);
        e.list_click(EntryList::hk_lys, 1);
        e.list_click(EntryList::Tipe_aanstelling, 0);
        e.list_click(EntryList::geslag_lys, 1);
        e.kies_p_t = {true, false};
        e.kies_tipe_onderwys[3] = true;
    }
    // Every message box the user was shown is a failure, and has the critical icon.
    void expect_messages_critical() const {
        for (const Shown& s : tree.dialogs.shown()) {
            if (s.kind == Shown::Kind::Message) {
                EXPECT_EQ(s.icon, korvel::ui::Icon::Critical) << s.text.toStdString();
            }
        }
    }
    int count(Shown::Kind kind) const {
        int n = 0;
        for (const Shown& s : tree.dialogs.shown()) {
            n += s.kind == kind;
        }
        return n;
    }
    StaffTree tree;
};

TEST_F(Entry, ANewEducatorLandsOnDiskAsTheFieldsSay) {
    tree.session.afrikaans = false;
    auto reg = open_register();
    add_new(*reg, [&](StaffEntry& e) {
        EXPECT_EQ(e.prs_data[9], "YYYY.MM.DD");
        EXPECT_TRUE(e.placeholder_shown);
        e.prs_data[1] = "20";
        complete(e);
        e.prs_data[4] = "PROFESSOR";  // the title combo takes free text
        e.prs_data[12] = "SAOU";
        e.prs_data[26] = "U123";
        e.prs_data[20] = "Afr, Eng";
        e.list_click(EntryList::ict_lys, 3);
        e.broodwinner = true;
        e.data_ok_click();
        EXPECT_TRUE(e.closed);
    });
    const Record r = master("20");
    EXPECT_EQ(r.text(PRSALG["PA_VAN"]).trimmed(), "NEL");
    EXPECT_EQ(r.text(PRSALG["PA_TITEL"]), "PROFE");
    EXPECT_EQ(r.text(PRSALG["PA_GESLAG"]), "F");  // FEMALE in English
    EXPECT_EQ(r.text(PRSALG["PA_RAS"]), "4 WHI");
    EXPECT_EQ(r.text(PRSALG["PA_TAAL"]), "1 AFR");
    EXPECT_EQ(r.int16(PRSALG["PA_REQV"]), 14);
    EXPECT_EQ(r.int16(PRSALG["PA_ICT_LV"]), 3);
    EXPECT_EQ(r.text(PRSALG["PA_FOR_NR"]).trimmed(), "2");
    EXPECT_EQ(r.text(PRSALG["PA_OD_BL"]), "E");
    EXPECT_EQ(r.text(PRSALG["PA_P_T"]), "P");
    EXPECT_EQ(r.text(PRSALG["PA_BRD_WNR"]), "J");
    EXPECT_EQ(r.raw_text(PRSALG["PA_TAALSMB"]), "Afr, ");         // small letters kept, cut to five
    EXPECT_EQ(r.date(PRSALG["PA_G_DATUM"]), QDate(1985, 3, 12));  // from the ID number
    const Record a = additional("20");
    EXPECT_EQ(a.text(PRSADD["PD_ONDERWYS_VLAK"]), "3");
    EXPECT_EQ(a.int16(PRSADD["PD_KATEGORIE"]), 2);
    EXPECT_EQ(a.text(PRSADD["PD_UNIE_NR"]).trimmed(), "U123");
    // The attendance record is there, and the completeness questions were shown.
    EXPECT_EQ(tree.session.find_by_key(Code::PRSAFW, PRSAFW["PF_POS_NR"], "20") > 0, true);
    EXPECT_TRUE(tree.dialogs.texts().contains("APPOINTMENT DATES incomplete. Please correct..."));
    EXPECT_TRUE(tree.dialogs.texts().contains(
        "YEARS EXPERIENCE IN TEACHING incomplete. Please correct..."));
    expect_messages_critical();
}

TEST_F(Entry, TheCompletenessLoopEndsOnlyWithDatesAndYearsInEducation) {
    int appointments = 0;
    int experience = 0;
    tree.dialogs.on_form("sk415_prg", [&](ChildForm& f) {
        auto& a = static_cast<Appointments&>(f);
        a.form_load();
        if (++appointments == 1) {
            a.staff_exit_click();  // leaving without saving only asks again
            return;
        }
        a.dtm_data = {"", "2001.01.15", "2010.01.01"};
        a.grid_ok_click();
    });
    tree.dialogs.on_form("sk416_prg", [&](ChildForm& f) {
        auto& x = static_cast<Experience&>(f);
        x.form_load();
        x.jre_data[1] = "6";  // years at this school alone don't do
        if (++experience == 2) {
            x.jre_data[6] = "3";
        }
        x.jre_ok_click();
    });
    auto reg = open_register();
    add_new(*reg, [&](StaffEntry& e) {
        e.prs_data[1] = "20";
        complete(e);
        e.data_ok_click();
        EXPECT_TRUE(e.closed);
        // A later save of the entry form stands on what the two forms saved.
        EXPECT_TRUE(e.save_record());
    });
    EXPECT_EQ(appointments, 2);
    EXPECT_EQ(experience, 2);
    EXPECT_EQ(tree.dialogs.texts().count("AANSTELLINGSDATUMS onvolledig. Korrigeer asb..."), 2);
    const Record r = master("20");
    EXPECT_EQ(r.date(PRSALG["PA_DTM_AAN"]), QDate(2001, 1, 15));
    EXPECT_EQ(r.date(PRSALG["PA_DTM_SKL"]), QDate(2010, 1, 1));
    EXPECT_EQ(r.int16(PRSALG["PO_JRE_A_H"]), 3);
    EXPECT_EQ(r.int16(PRSALG["PO_JRE_OND"]), 6);  // lifted by the second save
}

TEST_F(Entry, CompulsoryFieldsTurnTheirLabelsRedTogether) {
    auto reg = open_register();
    add_new(*reg, [&](StaffEntry& e) {
        e.prs_data[1] = "20";
        e.data_ok_click();  // the placeholder is no date, and there is no ID number
        EXPECT_FALSE(e.closed);
        for (int label : {8, 9, 25, 18, 19, 22, 17, 26}) {
            EXPECT_EQ(e.data_teks_colour[label], kColourRed) << label;
        }
        EXPECT_EQ(e.data_teks_colour[1], kColourBlack);
        // Filling a field does not turn its label back.
        complete(e);
        e.kies_p_t = {false, false};
        e.data_ok_click();
        EXPECT_EQ(e.data_teks_colour[8], kColourRed);
        EXPECT_FALSE(e.closed);
    });
    EXPECT_EQ(count(Shown::Kind::Beep), 2);
    EXPECT_EQ(tree.dialogs.texts().count(kCompulsory), 2);
    expect_messages_critical();
    EXPECT_EQ(master("20").text(PRSALG["PA_VAN"]).trimmed(), "");  // nothing saved
}

TEST_F(Entry, AdminClassesNeedTheReducedSetAndSkipTheCompletenessLoop) {
    for (const QString klas : {"ADMIN", "ADMX"}) {
        tree.dialogs.clear();
        auto reg = open_register();
        add_new(*reg, [&](StaffEntry& e) {
            e.prs_data[1] = klas == "ADMIN" ? "30" : "31";
            e.prs_data[18] = klas;
            e.data_ok_click();
            for (int label = 0; label < kEntryFields; ++label) {
                const bool red =
                    label == 8 || label == 9 || label == 18 || label == 19 || label == 17;
                EXPECT_EQ(e.data_teks_colour[label] == kColourRed, red) << label;
            }
            e.data_teks_colour.fill(kColourBlack);
            e.prs_data[9] = "1990.05.06";
            e.list_click(EntryList::ras_lys, 0);
            e.list_click(EntryList::taal_lys, 1);
            e.list_click(EntryList::Tipe_aanstelling, 1);
            e.kies_p_t = {false, true};
            e.data_ok_click();
            EXPECT_TRUE(e.closed);
        });
        EXPECT_FALSE(
            tree.dialogs.texts().contains("AANSTELLINGSDATUMS onvolledig. Korrigeer asb..."));
    }
    // ADMX is an educator for the population test all the same.
    EXPECT_TRUE(korvel::shell::is_educator(master("31")));
    EXPECT_FALSE(korvel::shell::is_educator(master("30")));
    EXPECT_EQ(master("30").date(PRSALG["PA_G_DATUM"]), QDate(1990, 5, 6));
}

TEST_F(Entry, SaveStopsForABlankOrDuplicatePostNumberOnANewRecordOnly) {
    auto reg = open_register();
    add_new(*reg, [&](StaffEntry& e) {
        complete(e);
        e.prs_data[1] = "  ";
        e.data_ok_click();
        EXPECT_EQ(tree.dialogs.last_text(), "POSNOMMER MOET INGEVOER WORD ... VERSOEK GEWEIER!");
        e.prs_data[1] = "10";
        e.data_ok_click();
        EXPECT_EQ(tree.dialogs.last_text(),
                  QString::fromUtf8("POSNOMMER 10 REEDS OP LêER ... VERSOEK GEWEIER!"));
        EXPECT_FALSE(e.closed);
    });
    expect_messages_critical();
    // An existing record may take a number in use: no question, the number is written, and the
    // learner side is not asked about.
    struct NoLearners : LearnerFiles {
        int calls = 0;
        int rewrite_post_cells(
            const QString&, LearnerTable,
            const std::function<std::optional<QString>(const QString&)>&) override {
            return ++calls, 0;
        }
    } learners;
    tree.dialogs.clear();
    add_person(tree.session, {.post = "11", .surname = "DU TOIT", .names = "KOBUS"});
    auto again = open_register();
    edit(*again, "11", [&](StaffEntry& e) {
        e.learner_files = &learners;
        e.prs_data[1] = "10";
        EXPECT_TRUE(e.save_record());
    });
    // The register's repair gives the second holder of the number a "*" when it fills again.
    EXPECT_EQ(master("10*").text(PRSALG["PA_VAN"]).trimmed(), "DU TOIT");
    EXPECT_EQ(learners.calls, 0);
    EXPECT_EQ(count(Shown::Kind::Question), 0);
}

TEST_F(Entry, FillingShowsStoredCodesByTheirRules) {
    // An English appointment letter, a qualification above the category, codes of another
    // language, a birth date the ID number overrides.
    tree.session.open_file(Code::PRSALG);
    tree.session.read_record(Code::PRSALG, 1);
    Record& r = tree.session.working(Code::PRSALG);
    r.set_text(PRSALG["PA_OD_BL"], "E");
    r.set_text(PRSALG["PA_P_T"], "T");
    r.set_text(PRSALG["PA_RAS"], "1 BLA");
    r.set_text(PRSALG["PA_TAAL"], "99 XX");
    r.set_text(PRSALG["PA_FOR_NR"], "3");
    r.set_text(PRSALG["PA_BRD_WNR"], "N");
    r.set_int16(PRSALG["PA_REQV"], 13);
    r.set_date(PRSALG["PA_G_DATUM"], QDate(1979, 6, 6));
    tree.session.write_record(Code::PRSALG, 1);
    auto reg = open_register();
    edit(*reg, "10", [&](StaffEntry& e) {
        EXPECT_EQ(e.list(EntryList::Tipe_aanstelling).list_index, -1);
        EXPECT_EQ(e.kies_p_t, (std::array<bool, 2>{false, true}));
        EXPECT_EQ(e.prs_data[9], "1980.01.01");
        EXPECT_FALSE(e.placeholder_shown);
        EXPECT_EQ(e.prs_data[13], "1 SWART");  // the code read in the current language
        EXPECT_EQ(e.prs_data[14], "");         // out of the list's range
        EXPECT_EQ(e.prs_data[25], "3 First Academic Qualification");
        EXPECT_EQ(e.prs_data[21], "13");
        EXPECT_FALSE(e.broodwinner);
        EXPECT_EQ(e.heading, "10 MNR P VAN WYK");
        // The unselected appointment fails its test until a row is chosen again.
        e.data_ok_click();
        EXPECT_EQ(e.data_teks_colour[17], kColourRed);
    });
    EXPECT_EQ(additional("10").int16(PRSADD["PD_KATEGORIE"]), 3);  // lifted and written
}

TEST_F(Entry, AWesternCapeSchoolTypesTheCemisNumberAndTheLuritsNumberIsShown) {
    tree.session.school.province_code = "WC";
    tree.session.open_file(Code::PRSLURITS);
    Record& lurits = tree.session.working(Code::PRSLURITS);
    lurits.clear();
    lurits.set_text(PRSLURITS["LU_ID_NR"], "8001015009087");
    lurits.set_text(PRSLURITS["LU_NR"], "123456789");
    tree.session.append_record(Code::PRSLURITS);
    auto reg = open_register();
    edit(*reg, "10", [&](StaffEntry& e) {
        EXPECT_EQ(e.prs_data[11], "123456789");
        EXPECT_EQ(e.data_teks[20], "CEMIS-NOMMER");
        e.prs_data_got_focus(15);  // typed, no list
        for (const PopupList& l : e.lists) {
            EXPECT_FALSE(l.visible);
        }
        e.prs_data_click(11);  // the LURITS number sends the focus to the post number
        EXPECT_EQ(e.focus_field, 1);
        e.prs_data[15] = "WC1234567";
        EXPECT_TRUE(e.save_record());
    });
    EXPECT_EQ(additional("10").text(PRSADD["PD_CEMIS"]).trimmed(), "WC1234567");
    EXPECT_EQ(master("10").text(PRSALG["PA_GEBREK"]).trimmed(), "");
}

// The lists make a person's name from the record's bytes in one piece; it must read as the
// fields' texts put together would, whatever blanks, tabs, brackets or accents the names hold.
TEST(ListName, FromTheBytesAsFromTheTexts) {
    const QString cases[] = {
        QStringLiteral("JAN PIETER"),        QStringLiteral("  (JAN)  PIETER "),
        QStringLiteral("\tANNA\tMARIE "),    QStringLiteral("\u00c9LISE  \u00d6STER"),
        QStringLiteral("JAN \tB C"),         QString(),
        QStringLiteral("\u00a0JAN\u00a0 B"), QStringLiteral("PIETER (PIET)")};
    for (const QString& names : cases) {
        Record r(PRSALG);
        r.clear();
        r.set_text(PRSALG["PA_VAN"], QStringLiteral(" VAN DER MERWE "));
        r.set_text(PRSALG["PA_NAME"], names);
        r.set_text(PRSALG["PA_TITEL"], QStringLiteral("MEV"));
        const QString initials = korvel::shell::initials(r.text(PRSALG["PA_NAME"]).trimmed());
        EXPECT_EQ(korvel::shell::record_initials(r.data()), initials) << names.toStdString();
        EXPECT_EQ(korvel::shell::list_name(r.data()), "VAN DER MERWE " + initials + " MEV")
            << names.toStdString();
    }
}

TEST(BirthDates, IdNumbersOfEveryLength) {
    EXPECT_EQ(birth_date_from_id("8001015009087"), "1980.01.01");
    EXPECT_EQ(birth_date_from_id("0402295009087"), "2004.02.29");
    EXPECT_EQ(birth_date_from_id("0502295009087"), "");  // no 29 February in 2005
    EXPECT_EQ(birth_date_from_id("29123"), "");
    EXPECT_EQ(birth_date_from_id("AB0101"), "");
    QString id;
    for (int length = 0; length <= 20; ++length, id += u'9') {
        EXPECT_EQ(birth_date_from_id(id), "") << length;  // 999999 is no date either
    }
}

TEST_F(Entry, IdNumberAndBirthDateFields) {
    auto reg = open_register();
    add_new(*reg, [&](StaffEntry& e) {
        // The first key in the birth date clears the grey placeholder.
        EXPECT_EQ(e.prs_data_key_press(9, '1').key_ascii, '1');
        EXPECT_FALSE(e.placeholder_shown);
        EXPECT_EQ(e.prs_data[9], "");
        // Capitals everywhere but in the language ability; Enter moves on.
        EXPECT_EQ(e.prs_data_key_press(2, 'a').key_ascii, 'A');
        EXPECT_EQ(e.prs_data_key_press(20, 'a').key_ascii, 'a');
        EXPECT_EQ(e.prs_data_key_press(10, kEnterKey).key_ascii, 0);
        EXPECT_EQ(e.focus_field, 12);

        e.prs_data[9] = "2016.13.01";
        e.prs_data_lost_focus(9);
        EXPECT_EQ(tree.dialogs.last_text(), "GEBOORTEDATUM VERKEERD!");
        e.prs_data[9] = "31.02";
        e.prs_data_lost_focus(9);
        EXPECT_EQ(tree.dialogs.texts().count("GEBOORTEDATUM VERKEERD!"), 2);
        expect_messages_critical();

        // A doubtful ID number: No keeps the focus there, Yes takes its birth date.
        e.focus_field = -1;
        e.prs_data[8] = "12345678";
        tree.dialogs.answer(Answer::No);
        e.prs_data_lost_focus(8);
        EXPECT_EQ(e.focus_field, 8);
        EXPECT_EQ(e.prs_data[9], "31.02");
        tree.dialogs.answer(Answer::Yes);
        e.prs_data_lost_focus(8);
        EXPECT_EQ(e.prs_data[9], "31.02");  // 123456 is no date: the field stays
        e.prs_data[8] = "7508120123";       // 10 characters: doubtful, but a date all the same
        tree.dialogs.answer(Answer::Yes);
        e.prs_data_lost_focus(8);
        EXPECT_EQ(e.prs_data[9], "1975.08.12");
        EXPECT_TRUE(tree.dialogs.texts().last().startsWith("ID-NOMMER WAARSKYNLIK VERKEERD!\n"));

        // Focus on a field trims the first fields and keeps the date in step with the ID.
        e.prs_data[2] = "  NEL ";
        e.prs_data[9] = "1975.08.13";
        e.prs_data_got_focus(4);
        EXPECT_EQ(e.prs_data[2], "NEL");
        EXPECT_EQ(e.prs_data[9], "1975.08.12");
        EXPECT_TRUE(e.list(EntryList::titel_lys).visible);
        e.prs_data_got_focus(5);
        EXPECT_FALSE(e.list(EntryList::titel_lys).visible);
    });
}

TEST_F(Entry, APersonSavedWithoutAnyDateGetsToday) {
    auto reg = open_register();
    add_new(*reg, [&](StaffEntry& e) {
        e.prs_data[1] = "40";
        e.prs_data[9] = "2016.13.01";  // no date: today goes in the record
        EXPECT_TRUE(e.save_record());
    });
    EXPECT_EQ(master("40").date(PRSALG["PA_G_DATUM"]), QDate(2026, 11, 23));
    add_new(*reg, [&](StaffEntry& e) {
        e.prs_data[1] = "41";
        EXPECT_TRUE(e.save_record());  // the placeholder left as it is
    });
    EXPECT_EQ(master("41").date(PRSALG["PA_G_DATUM"]), QDate(2026, 11, 23));
}

TEST_F(Entry, BrowseModeWritesNothing) {
    tree.session.browse_mode = true;
    const QByteArray before = korvel::testing::read_file(tree.staff_file("prs_alg_random.txt"));
    auto reg = open_register();
    edit(*reg, "10", [&](StaffEntry& e) {
        EXPECT_FALSE(e.data_del_enabled);
        EXPECT_EQ(e.tool_tips.data_ok, " Gaan voort ");
        e.prs_data[2] = "ANDER";
        EXPECT_TRUE(e.save_record());
        e.data_del_click();
    });
    EXPECT_EQ(korvel::testing::read_file(tree.staff_file("prs_alg_random.txt")), before);
}

TEST_F(Entry, InactivateDeleteAndReactivate) {
    auto reg = open_register();
    tree.dialogs.answer(Answer::No);
    edit(*reg, "10", [&](StaffEntry& e) { e.data_del_click(); });
    EXPECT_EQ(master("10").text(PRSALG["PA_AKTIEF"]), "");
    tree.dialogs.answer(Answer::Yes);
    edit(*reg, "10", [&](StaffEntry& e) {
        e.data_del_click();
        EXPECT_TRUE(e.closed);
        const GridRow& row = reg->prs_grid.rows[static_cast<std::size_t>(reg->prs_grid.selected)];
        EXPECT_EQ(row.cells[kColState], "*");
        EXPECT_TRUE(row.red[kColSurname]);
    });
    EXPECT_EQ(tree.dialogs.texts().last(), "WIL U DIE REKORD ONAKTIEF MAAK ?");
    EXPECT_EQ(master("10").text(PRSALG["PA_AKTIEF"]), "*");

    tree.dialogs.answer(Answer::Yes);
    edit(*reg, "10", [&](StaffEntry& e) { e.data_aktiveer_click(); });
    EXPECT_EQ(tree.dialogs.texts().last(), "WIL U DIE REKORD HERAKTIVEER ?");
    EXPECT_EQ(master("10").text(PRSALG["PA_AKTIEF"]), "");
    EXPECT_GT(tree.session.find_by_key(Code::PRSAFW, PRSAFW["PF_POS_NR"], "10"), 0);

    // Only an inactive record is removed for good, and only after its own question.
    tree.dialogs.answer(Answer::Yes);
    edit(*reg, "10", [&](StaffEntry& e) { e.data_del_click(); });
    tree.dialogs.answer(Answer::Yes);
    edit(*reg, "10", [&](StaffEntry& e) { e.data_del_click(); });
    EXPECT_EQ(tree.dialogs.texts().last(), "WIL U DIE REKORD PERMANENT VERWYDER ?");
    EXPECT_EQ(master("10").text(PRSALG["PA_AKTIEF"]), "D");
}

TEST_F(Entry, APostNumberThatCannotNameAFileIsKeptAsDataAndItsRemarksRefused) {
    auto reg = open_register();
    add_new(*reg, [&](StaffEntry& e) {
        e.prs_data[1] = "..\\..";
        EXPECT_TRUE(e.save_record());
        e.opmerkings_click(false);
    });
    EXPECT_EQ(master("..\\..").text(PRSALG["PA_POS_NR"]), "..\\..");
    EXPECT_FALSE(tree.dialogs.forms_shown().contains("teks_raam"));
    EXPECT_TRUE(tree.dialogs.last_text().startsWith("POSNOMMER ..\\.. KAN NIE"));
    // A good one opens the public remarks on a left click.
    edit(*reg, "10", [&](StaffEntry& e) { e.opmerkings_click(false); });
    EXPECT_TRUE(tree.dialogs.forms_shown().contains("teks_raam"));
}

TEST_F(Entry, TheChooserOpensTheDetailFormsAfterASave) {
    auto reg = open_register(false);
    int chooser_seen = 0;
    tree.dialogs.on_form("staff_kies_inlees", [&](ChildForm& f) {
        auto& c = static_cast<DetailChooser&>(f);
        ++chooser_seen;
        EXPECT_EQ(c.caption, "PERSONEELBESONDERHEDE INLEES");
        for (int i : {3, 5, 7}) {
            EXPECT_FALSE(c.pr_option[i].visible) << i;  // not for employees
        }
        EXPECT_TRUE(c.pr_option[8].enabled);  // the timetable, for both populations
        c.pr_option_click(4);
        EXPECT_EQ(c.chosen_label, "A1 MNR T J MOKOENA");
    });
    edit(*reg, "A1", [&](StaffEntry& e) {
        e.prs_data[3] = "THABO JOHN";
        e.alg_opsies_click(1);  // no compulsory tests on this route
    });
    EXPECT_EQ(chooser_seen, 1);
    EXPECT_EQ(tree.dialogs.forms_shown(), QStringList({"sk411_inlees", "sk415_prg", "sk416_prg",
                                                       "staff_kies_inlees", "sk415_prg"}));
    EXPECT_EQ(master("A1").text(PRSALG["PA_NAME"]).trimmed(), "THABO JOHN");
}

// The attendance register opened from the chooser reopens the master file and scans every staff
// record; the entry form's saves that follow must still land on its own person. The same edit is
// made straight, then with the register opened on a month, then with it left from the month list.
TEST_F(Entry, AnEditAfterTheAttendanceRegisterLandsOnItsOwnRecord) {
    const auto edit_via = [](StaffTree& t, int detour) {
        t.session.fixed_today = QDate(2026, 11, 23);
        add_person(t.session, {.post = "10", .surname = "VAN WYK", .id = "8001015009087"});
        add_person(t.session, {.post = "A1", .surname = "MOKOENA", .klas = "PSS"});
        int choosers = 0;
        t.dialogs.on_form("staff_kies_inlees", [&](ChildForm& f) {
            if (++choosers == 1 && detour > 0) {
                static_cast<DetailChooser&>(f).pr_option_click(6);
            }
        });
        t.dialogs.on_form("sk417_prg", [&](ChildForm& f) {
            auto& request = static_cast<korvel::attendance::AttendanceRequest&>(f);
            korvel::attendance::AttendanceRegister attendance(request.session, request.educators);
            attendance.form_load();
            if (detour == 1) {
                attendance.maand_lys.list_index = 2;
                attendance.maand_lys_dbl_click();
                attendance.staff_exit_click();
            }
            attendance.staff_exit_click();
        });
        t.dialogs.on_form("sk411_inlees", [&](ChildForm& f) {
            auto& e = static_cast<StaffEntry&>(f);
            e.form_activate();
            complete(e);
            e.alg_opsies_click(1);  // MEER BESONDERHEDE
            e.prs_data[3] = "PIETER JOHAN";
            e.alg_opsies_click(1);  // the chooser is reached again
            e.data_ok_click();
            EXPECT_TRUE(e.closed);
        });
        StaffRegister reg(t.session, true);
        reg.user = "ANNA";
        reg.form_load();
        reg.prs_grid_click(0);
        EXPECT_EQ(choosers, 2) << detour;
        EXPECT_FALSE(t.dialogs.texts().join("|").contains("KAN NIE")) << detour;
        return read_file(t.staff_file("prs_alg_random.txt"));
    };
    StaffTree straight;
    const QByteArray expected = edit_via(straight, 0);
    ASSERT_EQ(expected.size(), 2 * PRSALG.record_length);
    EXPECT_EQ(QString::fromLatin1(expected.mid(PRSALG["PA_NAME"].offset, 12)), "PIETER JOHAN");
    const int length = PRSALG.record_length;
    for (int detour : {1, 2}) {
        StaffTree t;
        const QByteArray bytes = edit_via(t, detour);
        EXPECT_TRUE(bytes.left(length) == expected.left(length)) << "edited record, " << detour;
        EXPECT_TRUE(bytes.mid(length) == expected.mid(length)) << "other record, " << detour;
    }
}

TEST(LearnerCascade, MatchesStarlessFormsAndAsksFirst) {
    EXPECT_TRUE(post_number_matches(" 12*", "12"));
    EXPECT_TRUE(post_number_matches("12", "12*"));
    EXPECT_FALSE(post_number_matches("123", "12"));
    EXPECT_FALSE(post_number_matches("", ""));

    StaffTree tree;
    tree.session.afrikaans = false;
    struct Fake : LearnerFiles {
        std::map<std::pair<QString, int>, QStringList> cells;
        int rewrite_post_cells(
            const QString& folder, LearnerTable table,
            const std::function<std::optional<QString>(const QString&)>& edit) override {
            int n = 0;
            for (QString& c : cells[{folder, static_cast<int>(table)}]) {
                if (auto v = edit(c)) {
                    c = *v, ++n;
                }
            }
            return n;
        }
    } files;
    const QStringList folders = learner_year_folders(tree.session, {"2025", "2026"});
    EXPECT_EQ(folders.first(), tree.session.folders.admin + "\\L202526");
    const std::pair<QString, int> subjects{folders[0], static_cast<int>(LearnerTable::Subjects)};
    const std::pair<QString, int> guardians{folders[1], static_cast<int>(LearnerTable::Guardians)};
    files.cells[subjects] = {"12", "13", "12*"};
    files.cells[guardians] = {"12"};

    EXPECT_TRUE(replace_learner_post_number(tree.session, files, folders, "", "20"));  // blank
    EXPECT_TRUE(tree.dialogs.shown().isEmpty());
    tree.dialogs.answer(Answer::No);
    EXPECT_FALSE(replace_learner_post_number(tree.session, files, folders, "12", "20"));
    EXPECT_EQ(files.cells[guardians].first(), "12");
    tree.dialogs.answer(Answer::Yes);
    int steps = 0;
    EXPECT_TRUE(replace_learner_post_number(tree.session, files, folders, "12", "20",
                                            [&](int, int total) { steps += total == 10; }));
    EXPECT_EQ(steps, 10);
    EXPECT_EQ(files.cells[subjects], QStringList({"20", "13", "20"}));
    EXPECT_EQ(tree.dialogs.texts()[1],
              "MUST ALL LEARNER RECORDS \n(GENERAL, CLASSES, SUBJECTS, BEHAVIOUR, GUARDIANS)\n BE "
              "ADJUSTED TO REPLACE POST NUMBER 12 WITH 20?");
    EXPECT_EQ(tree.dialogs.last_text(),
              "ALL LEARNER RECORDS WERE CHANGED AND POST NUMBER 12 REPLACED WITH 20!");
}

TEST(LearnerCascade, DbfTablesAreRewrittenInPlace) {
    StaffTree tree;
    const QString folder = tree.session.folders.admin + "\\L202626";
    tree.session.fs().create_folder(folder);
    const QByteArray path = QFile::encodeName(tree.session.fs().native(folder) + "/vakdta.dbf");
    {
        DBFHandle dbf = DBFCreate(path.constData());
        ASSERT_NE(dbf, nullptr);
        DBFAddField(dbf, "VAK1", FTString, 8, 0);
        DBFAddField(dbf, "VAK1_POS", FTString, 5, 0);
        DBFAddField(dbf, "VAK2_POS", FTString, 5, 0);
        const char* rows[][3] = {{"WISK", "12", "13"}, {"12", "12*", "12"}};
        for (int r = 0; r < 2; ++r) {
            for (int f = 0; f < 3; ++f) {
                DBFWriteStringAttribute(dbf, r, f, rows[r][f]);
            }
        }
        DBFClose(dbf);
    }
    DbfLearnerFiles files(tree.session);
    const int changed = files.rewrite_post_cells(folder, LearnerTable::Subjects,
                                                 [](const QString& c) -> std::optional<QString> {
                                                     if (post_number_matches(c, "12")) {
                                                         return QStringLiteral("20");
                                                     }
                                                     return std::nullopt;
                                                 });
    EXPECT_EQ(changed, 3);  // the subject cell that holds "12" is no post number
    DBFHandle dbf = DBFOpen(path.constData(), "rb");
    ASSERT_NE(dbf, nullptr);
    EXPECT_STREQ(DBFReadStringAttribute(dbf, 0, 1), "20");
    EXPECT_STREQ(DBFReadStringAttribute(dbf, 0, 2), "13");
    EXPECT_STREQ(DBFReadStringAttribute(dbf, 1, 0), "12");
    EXPECT_STREQ(DBFReadStringAttribute(dbf, 1, 1), "20");
    DBFClose(dbf);
    EXPECT_EQ(files.rewrite_post_cells(folder, LearnerTable::General,
                                       [](const QString&) { return std::optional<QString>("X"); }),
              0);  // no such table in the folder
}

}  // namespace
