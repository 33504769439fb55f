// A fresh host and a private scratch folder for each preference test.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <stdlib.h>

#include "TempFolder.h"
#include "host/PREF_Preferences.h"
#include "qzhost/HostControls.h"
#include "qzhost/MainLoop.h"
#include "qzhost/PreferenceFile.h"

namespace prefstest {

inline constexpr const char* kSection = "Misc Section";
inline constexpr const char* kKey = "Info Palette Pixel Display";

inline std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void WriteFile(const std::filesystem::path& path, const std::string& text) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
}

/// The names of the files in `folder`.
inline std::vector<std::string> FilesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

class PrefsTest : public ::testing::Test {
protected:
    void SetUp() override {
        qzhost::MainLoop::Get().AdoptCurrentThread();
        qzhost::HostControls::Get().Reset();
    }

    void TearDown() override { qzhost::HostControls::Get().Reset(); }

    PREF_Handle Store() const { return PREF_GetPrefHandle(PREF_TYPE_TEXT); }

    /// The stored long, or the error code as a failure.
    long Get(const char* section, const char* key, long fallback = -999) {
        long value = -12345;
        EXPECT_EQ(PREF_GetTextPrefLong(Store(), section, key, fallback, &value), QZ_Err_NONE);
        return value;
    }

    bool Exists(const char* section, const char* key) {
        bool exists = false;
        EXPECT_EQ(PREF_DoesKeyExist(Store(), section, key, &exists), QZ_Err_NONE);
        return exists;
    }

    qztest::TempFolder temp_{"prefs-test"};
    std::filesystem::path folder_ = temp_.Path();
};

} // namespace prefstest
