// Saves a project over and over, each time with another number in all of its values: project_saver FILE

#include "host/project/project_writer.h"

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

int main(int argc, char** argv)
{
    if (argc != 2)
        return EXIT_FAILURE;
    for (std::uint32_t number = 1;; ++number) {
        const std::vector<std::uint32_t> block(100000 + number % 7 * 30000, number);
        tessara::ProjectWriter writer(argv[1]);
        for (const char* name : {"north", "south"}) {
            const auto place = writer.AddElement(name);
            place->Write("BLOCK", 2, block.data(), block.size() * sizeof(std::uint32_t));
            place->Write("NUMBER", 2, &number, sizeof number);
        }
        writer.Set("number", static_cast<double>(number));
        writer.Commit();
        if (number == 1)
            std::cout << "saving" << std::endl;
    }
}
