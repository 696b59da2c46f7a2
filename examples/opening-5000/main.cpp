// make-opening-5000 FOLDER: writes 期初-5000.xlsx and, for the account that it goes into, 期初-5000.sql.
// make-opening-5000 REFUSED CORRECTED: corrects the file of refused rows that an import of it leaves.

#include "examples/opening-5000/FaultyOpening.h"
#include "import/writing/Files.h"

#include <cstdio>
#include <exception>

int main(int argc, char** argv) {
    try {
        const std::vector<opening::Row> rows = opening::Rows();
        if (argc == 3) {
            opening::CorrectRefused(argv[1], rows, argv[2]);
        } else if (argc == 2) {
            const std::string base = std::string(argv[1]) + "/期初-5000";
            opening::WriteWorkbook(base + ".xlsx", rows);
            importing::WriteFile(base + ".sql", opening::AccountSql());
        } else {
            std::fputs("usage: make-opening-5000 FOLDER | REFUSED CORRECTED\n", stderr);
            return 2;
        }
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
