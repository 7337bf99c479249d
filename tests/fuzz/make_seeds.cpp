// make_seeds FOLDER: writes the seeds of each target into a folder of its name, which is made where missing.
#include <filesystem>
#include <fstream>
#include <iostream>

#include "fuzz/seeds.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: make_seeds FOLDER\n";
        return 2;
    }
    for (const auto& [target, inputs] : fuzz::makeSeeds()) {
        const std::filesystem::path folder = std::filesystem::path(argv[1]) / target;
        std::filesystem::create_directories(folder);
        for (std::size_t i = 0; i < inputs.size(); ++i) {
            std::ofstream(folder / ("seed-" + std::to_string(i)), std::ios::binary)
                .write(reinterpret_cast<const char*>(inputs[i].data()),
                       static_cast<std::streamsize>(inputs[i].size()));
        }
    }
}
