#include "import/checks/CheckAgainstAccount.h"

namespace importing {

void CheckAgainstAccount(Outcome& outcome, AccountReader& account) {
    if (outcome.classFields->className == "ClsKovra") {
        CheckOpening(outcome, account);
        CheckProjects(outcome, account);
        NoteLedgerAccounts(outcome, account);
    } else if (outcome.classFields->document.empty()) {
        CheckSettings(outcome);
        CheckProjects(outcome, account);
    }
}

} // namespace importing
