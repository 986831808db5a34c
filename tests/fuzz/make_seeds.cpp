// Writes the fuzzers' first inputs: files as the writers produce them.
#include <fstream>
#include <string>

#include "files/recovery_format.h"
#include "tests/support/sample_files.h"

using namespace fileformat;

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;  // make_seeds PUZZLE-CORPUS COLLECTION-CORPUS
    const std::string puzzles = argv[1], collections = argv[2];
    const std::pair<std::string, std::vector<uint8_t>> seeds[] = {
        {puzzles + "/plain.fpp", encodePuzzleFile(samples::puzzle(false))},
        {puzzles + "/trays-and-groups.fpp", encodePuzzleFile(samples::puzzle(true))},
        {puzzles + "/tag-only.fpp", encodePuzzleFile(PuzzleFileContents())},
        {puzzles + "/recovery.fpr",
         encodeRecoveryFile({"C:\\My puzzles\\cat.fpp", samples::puzzle(true)})},
        {collections + "/two.fpc", encodeCollectionFile(samples::collection())},
        {collections + "/empty.fpc", encodeCollectionFile({})},
    };
    for (const auto& [path, bytes] : seeds)
        std::ofstream(path, std::ios::binary) << std::string(bytes.begin(), bytes.end());
    return 0;
}
