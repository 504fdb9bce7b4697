#include "fouriertransform.h"

#include <algorithm>
#include <fftw3.h>
#include <new>

void FourierTransform::Free::operator()(Complex* buffer) const
{
    fftw_free(buffer);
}

void FourierTransform::DestroyPlan::operator()(fftw_plan_s* plan) const
{
    fftw_destroy_plan(plan);
}

FourierTransform::FourierTransform(int size, Direction direction)
    : m_size(size)
    , m_buffer(static_cast<Complex*>(fftw_malloc(sizeof(Complex) * std::size_t(size))))
{
    if (!m_buffer)
        throw std::bad_alloc();
    // FFTW has its own type for the same two doubles. An estimated plan does not depend on timing,
    // so that every run gives the same bits.
    auto* const numbers = reinterpret_cast<fftw_complex*>(m_buffer.get());
    m_plan.reset(fftw_plan_dft_1d(size, numbers, numbers,
                                  direction == Direction::Forward ? FFTW_FORWARD : FFTW_BACKWARD,
                                  FFTW_ESTIMATE));
    std::uninitialized_fill(begin(), end(), Complex());
}

void FourierTransform::run()
{
    fftw_execute(m_plan.get());
}
