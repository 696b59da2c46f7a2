#include "ClsKovra/GetTrackFlag.h"
#include "ClsKovra/GlMendFlag.h"
#include "refhost/Environment.h"
#include "tests/ClsKovra/Lookups.h"
#include "tests/ClsKovra/OpeningFixture.h"
#include "tests/support/ErrorOf.h"

namespace {

namespace lookup = test::lookup;
using testing::ElementsAre;
using testing::IsEmpty;

class InvCodeIsTorFTest : public test::OpeningTest {
protected:
    /// Asks on an instance that has imported an empty request.
    void Ask(const std::function<void(kovra::ClsKovra& instance)>& ask) {
        afterwards = ask;
        Import("");
    }
};

TEST_F(InvCodeIsTorFTest, ReadsAFlagOfAnItem) {
    account.Run("UPDATE inventory SET bInvBatch = 1 WHERE cInvCode = 'A1'");
    Ask([](kovra::ClsKovra& instance) {
        EXPECT_TRUE(instance.InvCodeIsTorF("A1", "bInvBatch"));
        EXPECT_FALSE(instance.InvCodeIsTorF("A1", "bInvQuality"));
    });
    EXPECT_THAT(RowLines(), ElementsAre(lookup::Flag("bInvBatch", "A1"), lookup::Flag("bInvQuality", "A1")));
    EXPECT_THAT(shown, IsEmpty());
}

TEST_F(InvCodeIsTorFTest, ReadsAnyFlag) {
    account.Run("UPDATE inventory SET bService = 1 WHERE cInvCode = 'A1'");
    Ask([](kovra::ClsKovra& instance) { EXPECT_TRUE(instance.InvCodeIsTorF("A1", "bService")); });
}

TEST_F(InvCodeIsTorFTest, ShowsThatAnItemIsUnknownAndCountsItAsFalse) {
    Ask([](kovra::ClsKovra& instance) { EXPECT_FALSE(instance.InvCodeIsTorF("X9", "bInvBatch")); });
    EXPECT_THAT(shown, ElementsAre("该存货没有找到！"));
}

TEST_F(InvCodeIsTorFTest, RaisesForANullFlag) {
    account.Run("UPDATE inventory SET bInvBatch = NULL WHERE cInvCode = 'A1'");
    Ask([](kovra::ClsKovra& instance) {
        EXPECT_EQ(test::ErrorNumberOf([&] { instance.InvCodeIsTorF("A1", "bInvBatch"); }),
                  host::error_number::invalidUseOfNull);
    });
}

TEST_F(InvCodeIsTorFTest, RaisesTheDatabasesError) {
    Ask([](kovra::ClsKovra& instance) {
        EXPECT_EQ(test::ErrorNumberOf([&] { instance.InvCodeIsTorF("A1", "bNoSuchFlag"); }),
                  host::error_number::syntaxError);
    });
}

TEST_F(InvCodeIsTorFTest, RaisesBeforeTheFirstTransact) {
    refhost::Environment environment;
    kovra::ClsKovra instance(environment);
    EXPECT_EQ(test::ErrorNumberOf([&] { instance.InvCodeIsTorF("A1", "bInvBatch"); }),
              host::error_number::objectNotSet);
}

TEST_F(InvCodeIsTorFTest, RaisesWhenTheConnectionCouldNotBeOpened) {
    loginXml = R"(<login QxDbName="Provider=None" cIYear="2023"/>)";
    Ask([](kovra::ClsKovra& instance) {
        EXPECT_EQ(test::ErrorNumberOf([&] { instance.InvCodeIsTorF("A1", "bInvBatch"); }),
                  host::error_number::objectClosed);
    });
}

class FlagTest : public test::OpeningTest {
protected:
    FlagTest() : login(loginXml, environment), state(environment) {
        state.login = &login;
        state.connection = environment.CreateConnection();
        state.connection->Open(account.connectionString(), "", "", host::command_option::unspecified);
    }

    refhost::Environment environment;
    refhost::Login login;
    ModPub::ImportState state;
    ModPub::RowLookups lookups{state};
};

TEST_F(FlagTest, TheTrackingFlagStandsAsItIs) {
    EXPECT_EQ(kovra::GetTrackFlag(lookups, "A1"), host::Value(false));
    account.Run("UPDATE inventory SET bTrack = 1 WHERE cInvCode = 'A1'");
    EXPECT_EQ(kovra::GetTrackFlag(lookups, "A1"), host::Value(true));
    account.Run("UPDATE inventory SET bTrack = NULL WHERE cInvCode = 'A1'");
    EXPECT_TRUE(kovra::GetTrackFlag(lookups, "A1").IsNull());
}

TEST_F(FlagTest, TheTrackingFlagOfAnUnknownItemIsFalse) {
    EXPECT_EQ(kovra::GetTrackFlag(lookups, "X9"), host::Value(false));
}

TEST_F(FlagTest, AModuleIsClosedByItsOwnFlag) {
    account.Run("INSERT INTO GL_mend (iyear, iperiod, bflag, bflag_IA, bflag_ST) VALUES (2023, 3, 1, 0, 1)\nGO\n"
                "INSERT INTO GL_mend (iyear, iperiod, bflag, bflag_IA) VALUES (2022, 4, 1, 1)");
    EXPECT_TRUE(kovra::GlMendFlag(state, "GL", 3));
    EXPECT_TRUE(kovra::GlMendFlag(state, "ST", 3));
    EXPECT_FALSE(kovra::GlMendFlag(state, "IA", 3));
    EXPECT_FALSE(kovra::GlMendFlag(state, "IA", 4)) << "another year's";
}

} // namespace
