#pragma once

#include "samples.h"

#include <memory>

struct fftw_plan_s;

/// A discrete Fourier transform of a fixed length by FFTW, in place on a buffer of its own.
class FourierTransform
{
public:
    enum class Direction { Forward, Backward };

    /// @param size  numbers in the buffer, at least 1; all are 0 at first
    FourierTransform(int size, Direction direction);

    /// Transforms the buffer. Neither direction is normalised: both together multiply by size().
    void run();

    int size() const { return m_size; }
    Complex* begin() { return m_buffer.get(); }
    Complex* end() { return m_buffer.get() + m_size; }

private:
    struct Free
    {
        void operator()(Complex* buffer) const;
    };
    struct DestroyPlan
    {
        void operator()(fftw_plan_s* plan) const;
    };

    int m_size;
    std::unique_ptr<Complex, Free> m_buffer; // aligned as the plan likes it
    std::unique_ptr<fftw_plan_s, DestroyPlan> m_plan;
};
