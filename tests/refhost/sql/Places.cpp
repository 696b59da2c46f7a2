#include "tests/refhost/sql/Places.h"

#include "refhost/OpenDatabase.h"
#include "tests/refhost/sql/Support.h"
#include "tests/support/Paths.h"
#include "tests/support/ValuesOf.h"

#include <cstdlib>
#include <regex>

namespace test_sql {

std::vector<Place> Places() {
    std::vector<Place> places = {Place::embedded, Place::embeddedThroughOdbc};
    if (std::getenv("KOVRA_TEST_ODBC") != nullptr) {
        places.push_back(Place::server);
    }
    return places;
}

std::string NameOf(Place place) {
    switch (place) {
    case Place::embedded:
        return "Embedded";
    case Place::embeddedThroughOdbc:
        return "EmbeddedThroughOdbc";
    case Place::server:
        break;
    }
    return "Server";
}

std::string ConnectionTextAt(Place place, const std::string& file) {
    switch (place) {
    case Place::embedded:
        return memory;
    case Place::embeddedThroughOdbc:
        return "Driver=" + test::OdbcDriverPath() + ";Provider=KovraAccount;Data Source=" + file;
    case Place::server:
        break;
    }
    return std::getenv("KOVRA_TEST_ODBC");
}

DatabaseAt::DatabaseAt(Place place) : place_(place), connection_(refhost::OpenOrCreate()) {
    const std::string file = (folder_.path() / "account.db").string();
    refhost::sql::OpenEmbedded("Provider=KovraAccount;Data Source=" + file, refhost::sql::Mode::create);
    connection_.Open(ConnectionTextAt(place, file), "", "", host::command_option::unspecified);
    if (place == Place::server) {
        before_ = Objects();
    }
}

DatabaseAt::~DatabaseAt() {
    if (place_ != Place::server) {
        return;
    }
    std::set<std::string> made = Objects();
    std::erase_if(made, [this](const std::string& object) { return before_.contains(object); });
    // A table goes behind those that refer to it.
    while (std::erase_if(made, [this](const std::string& object) { return Answer(Db(), "drop " + object).empty(); }) >
           0) {
    }
    EXPECT_EQ(made, std::set<std::string>());
}

std::set<std::string> DatabaseAt::Objects() {
    std::set<std::string> objects;
    for (const char* kind : {"TABLE", "VIEW"}) {
        const refhost::ResultSet names =
            Db().Query(fmt::format("select name from sysobjects where type = '{}'", *kind == 'T' ? 'U' : 'V'));
        for (const host::Value& name : test::ValuesOf(names)) {
            objects.insert(std::string(kind) + " [" + *name.As<std::string>() + "]");
        }
    }
    return objects;
}

void DatabaseAt::Check(const Case& each) {
    Expect(each, std::string(each.answer), [&] { return Answer(Db(), Here(std::string(each.sql))); });
}

void DatabaseAt::CheckBatch(const Case& each) {
    Expect(each, Heard(std::string(each.answer)), [&] { return Batch(Db(), Here(std::string(each.sql))); });
}

void DatabaseAt::Expect(const Case& each, const std::string& expected, const std::function<std::string()>& answer) {
    const bool own = each.answer.find("The embedded") != std::string_view::npos;
    if (!own || place_ != Place::server) {
        EXPECT_EQ(Comparable(answer()), Comparable(expected)) << each.sql;
    }
}

std::string DatabaseAt::Heard(const std::string& answers) const {
    if (place_ != Place::server) {
        return answers;
    }
    static const std::regex behindAnError("^(-[0-9]+: .*?); (says |rows\\(|[0-9]+ written|-[0-9]+: ).*");
    return std::regex_replace(answers, behindAnError, "$1");
}

std::string DatabaseAt::Here(const std::string& sql) {
    if (place_ != Place::server) {
        return sql;
    }
    static const std::regex named("(\\[)account(?=\\]\\.)|\\baccount(?=\\.\\.)|(\\buse )account\\b");
    return std::regex_replace(sql, named, "$1$2" + Name());
}

std::string DatabaseAt::Comparable(const std::string& text) {
    static const std::regex numbered("((?:PK|UQ|CK|FK|C)__\\w+?__)[0-9A-F]{8,16}");
    std::string comparable = std::regex_replace(text, numbered, "$1#");
    if (place_ == Place::server) {
        const std::regex own("\\b" + Name() + "(?=\\.dbo\\.|\"|')");
        comparable = std::regex_replace(comparable, own, "account");
    }
    return comparable;
}

std::string DatabaseAt::Name() { return *Db().Query("select db_name()").cells[0].As<std::string>(); }

} // namespace test_sql
