// Writes the fuzzers' first inputs: files as the writers produce them.
#include <cstdio>
#include <string>

#include "files/recovery_format.h"
#include "tests/support/sample_files.h"

namespace {

void save(const std::string& path, const std::vector<uint8_t>& bytes)
{
    FILE* file = std::fopen(path.c_str(), "wb");
    if (!file)
        return;
    std::fwrite(bytes.data(), 1, bytes.size(), file);
    std::fclose(file);
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: make_seeds PUZZLE-CORPUS COLLECTION-CORPUS\n");
        return 2;
    }
    using namespace fileformat;
    const std::string puzzles = argv[1], collections = argv[2];
    save(puzzles + "/plain.fpp", encodePuzzleFile(samples::puzzle(false)));
    save(puzzles + "/trays-and-groups.fpp", encodePuzzleFile(samples::puzzle(true)));
    PuzzleFileContents rectangular = samples::puzzle(true);
    rectangular.header.shapeMode = 1;
    save(puzzles + "/rectangular.fpp", encodePuzzleFile(rectangular));
    save(puzzles + "/tag-only.fpp", encodePuzzleFile(PuzzleFileContents()));
    save(puzzles + "/recovery.fpr",
         encodeRecoveryFile({"C:\\My puzzles\\cat.fpp", samples::puzzle(true)}));
    save(collections + "/two.fpc", encodeCollectionFile(samples::collection()));
    save(collections + "/empty.fpc", encodeCollectionFile({}));
    return 0;
}
