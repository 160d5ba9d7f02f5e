// SPDX-License-Identifier: Apache-2.0
#include "tool/commands.h"

using namespace brackwell::tests;

namespace {

/// A transaction with these elements after the usual ones.
std::string posted(const std::string& amount, const std::string& elements = "",
                   const std::string& date = "20240301") {
    return "<STMTTRN><TRNTYPE>POS<DTPOSTED>" + date + "<TRNAMT>" + amount + elements + "</STMTTRN>";
}

/// The rows of a table without its header, for documents of which nothing is to be said.
std::vector<std::string> rowsOf(std::vector<std::string> options, const std::string& transactions) {
    options.insert(options.begin(), "csv");
    std::vector<std::string> lines = linesOf(outputOf(options, transactionsWith(transactions)));
    if (!lines.empty()) lines.erase(lines.begin());
    for (std::string& line : lines) line.pop_back();  // the carriage return
    return lines;
}

}  // namespace

TEST_CASE("a table has the columns that are named, in their order") {
    const std::string document = transactionsWith(posted("-6.40", "<FITID>7<NAME>Cafe<MEMO>a, b"));
    struct Row {
        std::string columns;
        std::string table;
    };
    for (const Row& row :
         std::vector<Row>{{"amount", "amount\r\n-6.4\r\n"},
                          {"memo,amount,payeeName", "memo,amount,payeeName\r\n\"a, b\",-6.4,Cafe\r\n"},
                          {"memo, amount", "memo,amount\r\n\"a, b\",-6.4\r\n"},
                          {"branchID,branchID,file", "branchID,branchID,file\r\n,,'-\r\n"},
                          {"isConverted,fiTransactionID", "isConverted,fiTransactionID\r\n,7\r\n"}}) {
        CAPTURE(row.columns);
        CHECK(outputOf({"csv", "--columns", row.columns}, document) == row.table);
    }
}

TEST_CASE("columns of investments can be named, too") {
    const Finished finished = tool({"csv", "--kind", "positions", "--quiet", "--columns", "units,securityID",
                                    examplePath("investments.ofx")});
    CHECK(finished.status == 0);
    CHECK(finished.output.starts_with("units,securityID\r\n"));
    CHECK(linesOf(finished.output).size() > 1);
}

TEST_CASE("a column that a table does not have is wrong usage, and the others are listed") {
    struct Row {
        std::vector<std::string> options;
        std::string reason;
    };
    for (const Row& row : std::vector<Row>{
             {{"--columns", "payee"},
              "no column of this table is called \"payee\"; there are file, accountClass,"},
             {{"--columns", "file,"}, "no column of this table is called \"\""},
             {{"--columns", "memo,units"}, "is called \"units\""},
             {{"--columns", "payeeName", "--kind", "securities"}, "there are file, kind, id,"},
             {{"--kind", "positions", "--columns", "yield"}, "is called \"yield\""},
             {{"--kind", "positions", "--unique"}, "--unique: is for tables of bank transactions only"},
             {{"--delimiter", ""}, "neither a single character nor tab: \"\""},
             {{"--delimiter", ";;"}, "neither a single character nor tab: \";;\""},
             {{"--delimiter", "\""}, "neither a single character nor tab"},
             {{"--delimiter", "\n"}, "neither a single character nor tab"},
             {{"--decimal-mark", ";"}, "--decimal-mark"}}) {
        std::vector<std::string> arguments{"csv", examplePath("card.ofx")};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        const std::string text = Json(arguments).dump();
        CAPTURE(text);
        const Finished finished = tool(arguments);
        CHECK(finished.status == 2);
        CHECK(finished.output == "");
        CHECK(contains(finished.error, row.reason));
    }
}

TEST_CASE("the help has the name of every column") {
    std::string help = tool({"csv", "--help"}).output;
    std::ranges::replace(help, '\n', ' ');
    for (const char* kind : {"bank", "investments", "positions", "securities"}) {
        std::string header =
            linesOf(outputOf({"csv", "--kind", kind, "--currencies"}, transactionsWith(""))).at(0);
        header.pop_back();
        for (std::size_t begin = 0; begin < header.size();) {
            const std::size_t end = std::min(header.find(',', begin), header.size());
            const std::string name = header.substr(begin, end - begin);
            CAPTURE(name);
            CHECK((contains(help, " " + name + ",") || contains(help, " " + name + ".")));
            begin = end + 1;
        }
    }
}

TEST_CASE("dates without a time of day can be days") {
    const std::vector<std::string> options{"--days", "--columns", "datePosted"};
    CHECK(rowsOf(options, posted("1", "", "20240301")) == std::vector<std::string>{"2024-03-01"});
    CHECK(rowsOf(options, posted("1", "", "20240301000000")) == std::vector<std::string>{"2024-03-01"});
    CHECK(rowsOf(options, posted("1", "", "20240301120000")) ==
          std::vector<std::string>{"2024-03-01T12:00:00.000Z"});
    CHECK(rowsOf(options, posted("1", "", "20240301000000.001")) ==
          std::vector<std::string>{"2024-03-01T00:00:00.001Z"});
    CHECK(rowsOf({"--columns", "datePosted"}, posted("1")) ==
          std::vector<std::string>{"2024-03-01T00:00:00.000Z"});
}

TEST_CASE("amounts can have the decimals of the document") {
    struct Row {
        std::string written;
        std::string shortest;
        std::string withDecimals;
    };
    for (const Row& row : std::vector<Row>{{"-6.40", "-6.4", "-6.40"},
                                           {"6", "6", "6"},
                                           {"6.", "6", "6"},
                                           {"100.00", "100", "100.00"},
                                           {"+0.500", "0.5", "0.500"},
                                           {"0.00", "0", "0.00"},
                                           {"-.50", "-0.5", "-0.50"},
                                           {"1,234.50", "1234.5", "1234.50"},
                                           {"1,234", "1234", "1234"},
                                           {"-6,40", "-6.4", "-6.40"},
                                           {"1.234,50", "1234.5", "1234.50"},
                                           {"12.50 EUR", "12.5", "12.50"},
                                           {"1e3", "1000", "1000"},
                                           {"1.50e1", "15", "15"}}) {
        CAPTURE(row.written);
        CHECK(rowsOf({"--columns", "amount"}, posted(row.written)) == std::vector<std::string>{row.shortest});
        CHECK(rowsOf({"--columns", "amount", "--decimals"}, posted(row.written)) ==
              std::vector<std::string>{row.withDecimals});
    }
}

TEST_CASE("fields stand in quotes where they have the delimiter or the mark of decimals is it") {
    const std::string one = posted("-6.40", "<NAME>a;b, c<MEMO>tab\there");
    struct Row {
        std::vector<std::string> options;
        std::string fields;
    };
    for (const Row& row :
         std::vector<Row>{{{"--delimiter", ";"}, "-6.4;\"a;b, c\""},
                          {{"--delimiter", "tab"}, "-6.4\ta;b, c"},
                          {{"--decimal-mark", ","}, "\"-6,4\",\"a;b, c\""},
                          {{"--delimiter", ";", "--decimal-mark", ",", "--decimals"}, "-6,40;\"a;b, c\""},
                          {{"--decimal-mark", "."}, "-6.4,\"a;b, c\""}}) {
        std::vector<std::string> options{"--columns", "amount,payeeName"};
        options.insert(options.end(), row.options.begin(), row.options.end());
        const std::string text = Json(options).dump();
        CAPTURE(text);
        CHECK(rowsOf(options, one) == std::vector<std::string>{row.fields});
    }
    CHECK(outputOf({"csv", "--delimiter", ";"}, transactionsWith("")).starts_with("file;accountClass;"));
}

TEST_CASE("the mark of decimals that are written is not that of decimals that are read") {
    CHECK(rowsOf({"--columns", "amount", "--decimal-separator", ",", "--decimal-mark", "."}, posted("1,5")) ==
          std::vector<std::string>{"1.5"});
    CHECK(rowsOf({"--columns", "amount", "--decimal-mark", ","}, posted("1.5")) ==
          std::vector<std::string>{"\"1,5\""});
}

TEST_CASE("raw values have no apostrophe before them") {
    const std::string one = posted("1", "<FITID>-ab-1<NAME>=1+1<MEMO>-memo-message-");
    const std::vector<std::string> guarded{"'-ab-1,'=1+1,'-memo-message-"};
    const std::vector<std::string> raw{"-ab-1,=1+1,-memo-message-"};
    CHECK(rowsOf({"--columns", "fiTransactionID,payeeName,memo"}, one) == guarded);
    CHECK(rowsOf({"--columns", "fiTransactionID,payeeName,memo", "--raw"}, one) == raw);
}

TEST_CASE("the formats hold for tables of investments, too") {
    const std::vector<std::string> common{"csv",
                                          "--kind",
                                          "investments",
                                          "--quiet",
                                          "--columns",
                                          "tradeDate,total",
                                          examplePath("investments.ofx")};
    const auto rowOf = [&common](std::vector<std::string> more) {
        more.insert(more.begin(), common.begin(), common.end());
        return linesOf(tool(more).output).at(1);
    };
    CHECK(contains(rowOf({}), "T"));
    CHECK(contains(rowOf({"--decimal-mark", ",", "--delimiter", ";"}), ";"));
}

TEST_CASE("a table of several files can be without what stands in two of them") {
    const TemporaryFolder folder;
    const std::string coffee = posted("-3.20", "<FITID>1<NAME>Cafe");
    const std::string rent = posted("-900", "<FITID>2<NAME>Rent");
    const std::string salary = posted("2500", "<FITID>3<NAME>Salary", "20240320");
    folder.file("a.ofx", transactionsWith(coffee + rent));
    folder.file("b.ofx", transactionsWith(rent + salary));
    Command command =
        toolCommand({"csv", "--unique", "--columns", "file,payeeName", "a.ofx", "b.ofx", "a.ofx"});
    command.directory = folder.path();
    const Finished finished = run(command);
    CHECK(finished.status == 0);
    CHECK(finished.error == "");
    CHECK(finished.output == "file,payeeName\r\na.ofx,Cafe\r\na.ofx,Rent\r\nb.ofx,Salary\r\n");
    command.arguments.insert(command.arguments.end(), {"--since", "2024-03-10"});
    CHECK(run(command).output == "file,payeeName\r\nb.ofx,Salary\r\n");
}

TEST_CASE("a table without duplicates says what it leaves out, and which files were not read") {
    const TemporaryFolder folder;
    folder.file("a.ofx", transactionsWith(posted("-1", "<FITID>1<CURRENCY>CHF")));
    folder.file("b.ofx", transactionsWith(posted("-1", "<FITID>1<CURRENCY>CHF")));
    Command command =
        toolCommand({"csv", "--unique", "a.ofx", "b.ofx", "c.ofx", examplePath("investments.ofx")});
    command.directory = folder.path();
    const Finished finished = run(command);
    CHECK(finished.status == 1);
    CHECK(contains(finished.error, "a.ofx: 1 amount is in a currency other than the account's"));
    CHECK_FALSE(contains(finished.error, "b.ofx: 1 amount"));
    CHECK(contains(finished.error, "c.ofx: The file at c.ofx was not found."));
    CHECK(contains(finished.error, "not in this table; use --kind"));
}
