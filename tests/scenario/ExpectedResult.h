#pragma once

#include "refhost/xml/Document.h"
#include "tests/support/ScenarioFolder.h"

namespace test {

/// A scenario's result as the native documents write it.
inline std::string ExpectedResult(const std::filesystem::path& folder) {
    if (ExpectsEmptyResult(folder, Documents::native)) {
        return {};
    }
    const std::unique_ptr<host::DOMDocument> document = refhost::xml::CreateDocument();
    const std::filesystem::path file = ExpectedFile(folder, ".xml", Documents::native);
    EXPECT_TRUE(document->LoadXML(ReadText(file))) << file << " is not well-formed";
    return document->Xml();
}

} // namespace test
