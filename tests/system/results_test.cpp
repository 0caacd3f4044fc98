// These tests read views of a full OLT, and check what ten thousand of them leave behind.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "board/datastore.h"
#include "bsp_pon.h"
#include "resources.h"
#include "simulator.h"

namespace
{

// Returns the mappings of shared memory. Those of the allocator come and go, so they do not count.
size_t shared_mappings(pid_t process)
{
    std::ifstream maps("/proc/" + std::to_string(process) + "/maps");
    size_t count = 0;
    for (std::string line; std::getline(maps, line);)
        count += line.find("memfd") != std::string::npos;
    return count;
}

size_t files_below(const std::string &folder)
{
    const std::filesystem::recursive_directory_iterator files(folder);
    return static_cast<size_t>(std::distance(begin(files), end(files)));
}

uint32_t query(uint32_t pon_port)
{
    db_handle *db = nullptr;
    EXPECT_EQ(bsp_pon_exec_get_json_(BSP_CMD_VIEW_ONU_INFO_WEB, pon_port, 0, &db), BSP_OK);
    const uint32_t rows = db_rows(db);
    db_free(db);
    return rows;
}

TEST(Results, AFullOltFitsIntoOneView)
{
    Simulator simulator{{"--arrivals", "128"}};
    EXPECT_EQ(query(0), 16u * 128u);
}

TEST(Results, AViewLargerThanTheSmallBoundGivesNoDatabase)
{
    Simulator simulator{{"--arrivals", "128"}};
    db_handle *db = nullptr;
    testing::internal::CaptureStderr();
    EXPECT_EQ(bsp_pon_exec_get_json(BSP_CMD_VIEW_ONU_INFO_WEB, 0, 0, &db), BSP_OK);
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(db, nullptr);
    EXPECT_NE(log.find("10240"), std::string::npos) << log;
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 1) << log;
}

TEST(Results, TenThousandQueriesLeaveNothingBehind)
{
    Simulator simulator{{"--arrivals", "4"}};
    query(1);
    query(1); // after this the service has released what the first query needed
    const pid_t service = simulator.process();
    const pid_t self = getpid();
    const std::array before{open_files(self), open_files(service), shared_mappings(self), shared_mappings(service),
                            files_below(simulator.folder())};
    for (int i = 0; i < 10000; ++i)
        query(1);
    const std::array after{open_files(self), open_files(service), shared_mappings(self), shared_mappings(service),
                           files_below(simulator.folder())};
    EXPECT_EQ(after, before);
}

} // namespace
