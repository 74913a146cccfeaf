#pragma once

#include "platform/com/types.h"

#include <stdexcept>
#include <string>

namespace tessara {

/// Why something can't be done with the registry of classes: one sentence, and the result code that callers get.
class RegistryError : public std::runtime_error {
public:
    RegistryError(HRESULT result, const std::string& sentence) : std::runtime_error(sentence), result_(result) {}
    HRESULT Result() const noexcept { return result_; }

private:
    HRESULT result_;
};

}  // namespace tessara
