#pragma once

namespace CLI {
class Validator;
}

namespace tessara {

/// Lets an option have numbers of a range only, and nothing that is no number.
CLI::Validator NumberBetween(double low, double high);

}  // namespace tessara
