#include "tests/support/rules/SettingRules.h"

namespace test {
namespace {

/// The check records its refusal itself. An error is lost: it refuses the row with the message found so far.
bool PlayCheck(Play& play, const SettingRow& row) {
    std::string message = row.missing;
    RowLookUps lookUps(play);
    try {
        for (const CheckedCode& check : row.checks) {
            if (check.byYear) {
                play.Do("LoginYear");
            }
            lookUps.LookUp(check.sql);
            if (!check.refusal.empty()) {
                message = check.refusal;
                break;
            }
        }
        if (message.empty()) {
            return true;
        }
    } catch (const host::Error&) {
        // Only the refusal is recorded.
    }
    play.Outcome(row.key, 101, message);
    return false;
}

/// The save records an error and a refusal itself and returns normally.
void PlaySave(Play& play, const SettingRow& row) {
    std::string message;
    try {
        play.Do("LoginYear");
        play.LookUp(row.match);
        if (row.write.empty()) {
            message = "对照关系已经存在，无法插入新记录。";
        } else {
            play.Do("LoginYear");
            play.Execute(row.write);
            if (row.writeError.empty()) {
                play.Put(row.storedName, row.stored);
                return;
            }
            message = row.writeError;
        }
    } catch (const host::Error& error) {
        message = error.description();
    }
    play.Outcome(row.key, 101, message);
}

void PlayRow(Play& play, const SettingRow& row) {
    std::string key;
    std::string failure;
    try {
        // The row is read before its key is known.
        play.Point();
        key = row.key;
        if (!PlayCheck(play, row)) {
            return;
        }
        PlaySave(play, row);
    } catch (const host::Error& error) {
        failure = error.description();
    }
    if (failure.empty()) {
        play.Outcome(key, 0, "ok");
    } else {
        play.Outcome(key, 101, failure);
    }
}

/// Plays the look-up of the year-end closing, which has not been made.
void PlayYearEnd(Play& play) {
    play.Do("LoginYear");
    play.Create("Recordset");
    play.Do("SetCursorLocation");
    play.OpenReadClose("SELECT bflag_IA FROM GL_mend WHERE iyear = 2023 AND iperiod=12");
}

} // namespace

CheckedCode AccountCheck(const std::string& code) {
    return {.sql = "from code where ccode = '" + code + "' and  bend =1 and iyear =2023", .byYear = true};
}

std::string PlaySettings(Play& play, const std::vector<SettingRow>& rows) {
    return PlayRows(play, [&] {
        for (const SettingRow& row : rows) {
            PlayRow(play, row);
        }
    });
}

std::string PlaySettingsCall(Play& play, const std::function<std::string()>& run) {
    return PlayTransact(play, {.preCheck = [&]() -> std::optional<std::string> {
                                   PlayYearEnd(play);
                                   return std::nullopt;
                               },
                               .run = run});
}

std::string PlayStandardCostCall(Play& play, const std::function<std::string()>& run) {
    return PlayTransact(play, {.preCheck = [&]() -> std::optional<std::string> {
                                   play.LookUp("cName ='dCAFirstDate'");
                                   play.LookUp("cName ='bRLOrST'");
                                   PlayYearEnd(play);
                                   return std::nullopt;
                               },
                               .run = run});
}

std::string PlayEmpty(Play& play, const std::string& table) {
    play.Execute("Delete * From " + table);
    play.EraseAll();
    return {};
}

} // namespace test
