// This file reads the tables in the answers of views as JSON.
#pragma once

#include <string>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

namespace ponsim
{

inline rapidjson::Document parse(const std::string &text)
{
    rapidjson::Document document;
    document.Parse<rapidjson::kParseValidateEncodingFlag>(text.data(), text.size());
    EXPECT_FALSE(document.HasParseError()) << text.substr(0, 200);
    EXPECT_TRUE(document.IsArray());
    return document;
}

} // namespace ponsim
