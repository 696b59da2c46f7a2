// `kovra request`: the request of a spreadsheet's rows, and what is told of its cells.

#include "tests/cli/ProgramFixture.h"

namespace test {
namespace {

class Request : public Program {
protected:
    Request() {
        account().Run("insert into Warehouse (cWhCode, cWhName, bInCost) values ('02', N'成品库', 1)\nGO\n"
                      "insert into inventory (cInvCode, cInvName, bService, bInvType) values ('1001', N'轴承', 0, 0)");
    }
};

constexpr const char* head = "仓库编码,存货编码,数量,单价,金额\n";
constexpr const char* oneRow = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                               "<qxinterface roottag=\"row\" docid=\"期初\" proc=\"ADD\">\n"
                               "<row><cWhCode>02</cWhCode><cInvCode>1001</cInvCode><iQuantity>3</iQuantity>"
                               "<iCost>500</iCost><iPrice>1500</iPrice></row>\n"
                               "</qxinterface>\n";

TEST_F(Request, IsWrittenOfEveryRow) {
    Write("期初.csv", std::string(head) + "02,1001,3,500,1500\n");
    const Ended run = Kovra("request 期初.csv -o request.xml --lang zh");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.error, "可导入 1 行，拒绝 0 行。\n请求已写到 request.xml。\n");
    EXPECT_EQ(Read(Path("request.xml")), oneRow);
}

TEST_F(Request, GoesToStandardOutputWithoutAFile) {
    Write("期初.csv", std::string(head) + "02,1001,3,500,1500\n");
    const Ended run = Kovra("request 期初.csv --quiet");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, oneRow);
    EXPECT_EQ(run.error, "");
}

TEST_F(Request, TellsCorrectionsWarningsAndRefusalsByCellInChinese) {
    Write("期初.csv", std::string(head) + "02,1001 ,3,500,\"1,500.00\"\n02,1001,两个,2,5\n"
                                          "02,1002,1,2,3\n02,1001,3,500,1500\n");
    const Ended run = Kovra("request 期初.csv -o request.xml --lang zh");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.error, "更正了 2 处：\n"
                         "  B2（存货编码）：“1001 ”改为“1001”\n"
                         "  E2（金额）：“1,500.00”改为“1500”\n"
                         "请留意 1 处：\n"
                         "  E4（金额）：金额与数量乘单价相差 1。\n"
                         "拒绝了 2 行：\n"
                         "  C3（数量）：“两个”不是数字。\n"
                         "  第 3 行：与第 2 行重复。\n"
                         "  第 5 行：与第 2 行重复。\n"
                         "可导入 2 行，拒绝 2 行。\n"
                         "请求已写到 request.xml。\n");
}

TEST_F(Request, TellsCorrectionsWarningsAndRefusalsByCellInEnglish) {
    Write("opening.csv", "Warehouse code,Item code,Quantity,Unit cost,Amount\n02,1001,３,500,1501\n02,1001,x,2,5\n");
    const Ended run = Kovra("request opening.csv -o request.xml --lang en");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.error, "1 cell corrected:\n"
                         "  C2 (Quantity): \"３\" became \"3\"\n"
                         "A look at 1 cell is advised:\n"
                         "  E2 (Amount): The amount differs by 1 from quantity times unit cost.\n"
                         "1 row refused:\n"
                         "  C3 (Quantity): \"x\" is no number.\n"
                         "  line 3: Repeats line 2.\n"
                         "1 row can be imported, 1 row refused.\n"
                         "The request is in request.xml.\n");
}

TEST_F(Request, HoldsCodesAgainstTheAccountThatIsNamed) {
    Write("期初.csv", std::string(head) + "2,1001,3,500,1500\n");
    EXPECT_EQ(Kovra("request 期初.csv -o request.xml").status, 0);
    const Ended run = Kovra("request 期初.csv -o request2.xml --login login.xml --lang zh");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.error, "拒绝了 1 行：\n"
                         "  A2（仓库编码）：没有编码“2”；是“02”吗？可用 --fix-codes 采用。\n"
                         "可导入 0 行，拒绝 1 行。\n没有写出请求。\n");
    EXPECT_FALSE(std::filesystem::exists(Path("request2.xml")));
    EXPECT_EQ(Kovra("request 期初.csv -o request.xml --login login.xml --fix-codes").status, 0);
    EXPECT_EQ(Read(Path("request.xml")), oneRow);
}

TEST_F(Request, IsNotWrittenWhereTheHeadingsAreWrong) {
    Write("期初.csv", "仓库编码,存货编码,数里,金额\n02,1001,3,1500\n");
    const Ended run = Kovra("request 期初.csv -o request.xml --class ClsKovra --lang zh");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.error, "kovra: C1：不认识标题“数里”；是“数量”吗？\n没有写出请求。\n");
    EXPECT_FALSE(std::filesystem::exists(Path("request.xml")));
}

TEST_F(Request, ReadsTheColumnsThatTheUserMaps) {
    Write("期初.csv", "库,存货编码,名称,金额\n02,1001,轴承,1500\n");
    const Ended run = Kovra("request 期初.csv -q --class ClsKovra --map 库=仓库编码 --map 名称=");
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(Contains(run.output, "<row><cWhCode>02</cWhCode><cInvCode>1001</cInvCode><iPrice>1500</iPrice></row>"));
    EXPECT_EQ(Kovra("request 期初.csv --map 库 --lang zh").error, "kovra: --map 库：应写成 --map 列标题=字段\n");
}

TEST_F(Request, TakesTheLineOfHeadingsTheEncodingAndDuplicatesAsTheUserSays) {
    Write("期初.csv", "仓库编码,存货编码,x\n" + std::string(head) + "02,1001,3,500,1500\n02,1001,3,500,1500\n");
    EXPECT_EQ(Kovra("request 期初.csv -o r.xml --header-row 2").status, 1);
    EXPECT_EQ(Kovra("request 期初.csv -o r.xml --header-row 2 --allow-duplicates").status, 0);
    const Ended run = Kovra("request 期初.csv --header-row 2 --encoding UTF-99 --lang zh");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.error, "kovra: 不认识编码 UTF-99。\n");
}

TEST_F(Request, SaysWhatIsMissing) {
    EXPECT_EQ(Kovra("request --lang zh").error, "kovra: 缺少 FILE\n用法见 kovra request --help\n");
    EXPECT_EQ(Kovra("request x.csv").status, 2);
    Write("leer.csv", head);
    const Ended run = Kovra("request leer.csv --lang zh");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.error, "kovra: 表中没有数据行\n没有写出请求。\n");
    EXPECT_TRUE(Contains(Kovra("request leer.csv --class ClsX --lang zh").error, "没有名为“ClsX”的类"));
}

TEST_F(Request, IsToldAsJson) {
    Write("期初.csv", std::string(head) + "02,1001,３,500,1500\n02,1002,x,2,5\n");
    const Ended run = Kovra("request 期初.csv --json -q --lang zh");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output,
              "{\"file\":\"期初.csv\",\"class\":\"ClsKovra\",\"rows\":2,\"taken\":1,\"hidden\":0,\"faults\":[],"
              "\"corrections\":[{\"line\":2,\"cell\":\"C2\",\"heading\":\"数量\",\"old\":\"３\",\"new\":\"3\"}],"
              "\"refusals\":[{\"line\":3,\"cell\":\"C3\",\"heading\":\"数量\",\"reason\":\"“x”不是数字。\"}],"
              "\"warnings\":[]}\n");
    EXPECT_EQ(run.error, "");
}

} // namespace
} // namespace test
