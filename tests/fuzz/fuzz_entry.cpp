// What a fuzzing compiler calls with its inputs. TESSARA_FUZZ_TARGET names the target.

#include "fuzz/targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    tessara::test::TESSARA_FUZZ_TARGET(tessara::test::Damage({data, size}));
    return 0;
}
