#pragma once

namespace CLI {
class Validator;
}

namespace tessara {

/// Lets an option have numbers of a range only, and nothing that is no number.
CLI::Validator NumberBetween(double low, double high);

/// The same for whole numbers, written without a point or an exponent.
CLI::Validator WholeNumberBetween(double low, double high);

/// Lets an option have any finite number.
CLI::Validator Number();

}  // namespace tessara
