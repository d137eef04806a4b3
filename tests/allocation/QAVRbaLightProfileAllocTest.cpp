// Sampling allocates nothing, and a file that claims far more angles than it
// holds does not make the reader allocate for the claim. Global operator new and
// delete are replaced by counting versions over malloc in this test program,
// which has no other tests so that nothing else runs with them.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <random>
#include <string>
#include <vector>

#include "QAVRbaLightProfile.h"
#include "QAVTestSupport.h"

namespace {
std::atomic<long> gAllocations{0};
std::atomic<long long> gBytes{0};

void* Allocate(std::size_t size) {
  gAllocations.fetch_add(1, std::memory_order_relaxed);
  gBytes.fetch_add(static_cast<long long>(size), std::memory_order_relaxed);
  if (void* p = std::malloc(size ? size : 1)) return p;
  throw std::bad_alloc();
}
}  // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }

namespace {

std::string Data(const std::string& name) {
  return std::string(QAV_TEST_DATA_DIR) + "/ies/" + name;
}

TEST(LightProfileAllocationTest, SamplingAllocatesNothing) {
  std::vector<std::string> files = {Data("sym_h180_bilateral.ies"), Data("sym_h90_quadrant.ies"),
                                    Data("sym_h0_v360.ies"), Data("sym_h360_full.ies")};
  const std::filesystem::path big =
      qavtest::SharedDir().empty()
          ? std::filesystem::path()
          : qavtest::SharedDir() / "ies-corpus" / "eu_1995_263x361_large_crlf.ies";
  if (!big.empty() && std::filesystem::exists(big)) files.push_back(big.string());

  std::mt19937 random(12345);
  std::uniform_real_distribution<double> angle(-400.0, 800.0);
  std::vector<double> directions(std::size_t{2} * 50000);
  for (double& d : directions)
    d = angle(random);

  for (const std::string& file : files) {
    QAVRbaLightProfile profile;
    ASSERT_TRUE(profile.ReadIESFile(QAVUnicodeString(file))) << file;
    const long before = gAllocations.load();
    double sum = 0.0;
    for (std::size_t k = 0; k < directions.size(); k += 2)
      sum += profile.GetLightProfileValue(directions[k], directions[k + 1]);
    const long during = gAllocations.load() - before;
    EXPECT_EQ(during, 0) << file;
    EXPECT_GT(sum, 0.0) << file << ": the samples should not all be dark";
  }

  // The counter sees allocations made in this program, so a zero above means
  // something.
  const long before = gAllocations.load();
  auto* probe = new std::vector<double>(16);
  EXPECT_GE(gAllocations.load() - before, 2);
  delete probe;
}

TEST(LightProfileAllocationTest, ClaimedCountsDoNotDriveAllocation) {
  // A billion by a billion angles claimed by a file of a few hundred bytes.
  QAVRbaLightProfile profile;
  const long long before = gBytes.load();
  EXPECT_FALSE(profile.ReadIESFile(QAVUnicodeString(Data("reject_huge_count.ies"))));
  const long long used = gBytes.load() - before;
  EXPECT_LT(used, 1 << 20) << "bytes allocated while reading";
  EXPECT_EQ(profile.GetLastError().str(), "end of file after 7 of 1000000000 vertical angles");
  EXPECT_LE(profile.GetVerticalAngles().capacity(), 1000u);

  // Counts that fit the file but whose product does not: the table grows only
  // with the values actually present.
  qavtest::ScratchDir scratch;
  std::string text = "TILT=NONE\n1 1000 1.0 100000 100000 1 2 0 0 0\n1.0 1.0 10\n";
  for (int k = 0; k < 200000; ++k)
    text += "1\n";
  text += "5 5 5\n";
  const auto path = scratch.Write("claims.ies", text);
  const long long start = gBytes.load();
  EXPECT_FALSE(profile.ReadIESFile(QAVUnicodeString(path.string())));
  EXPECT_LT(gBytes.load() - start, 16LL * static_cast<long long>(text.size()));
  EXPECT_EQ(profile.GetLastError().str(), "end of file after 3 of 10000000000 candela values");
}

}  // namespace
