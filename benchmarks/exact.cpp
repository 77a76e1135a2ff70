#include "Exact.h"

template <typename T>
ExactInLibrary<T>::ExactInLibrary() = default;

template <typename T>
ExactInLibrary<T>::~ExactInLibrary() = default;

template <typename T>
void ExactInLibrary<T>::append(T value) {
    this->store(value);
}

template struct ExactInLibrary<unsigned char>;
template struct ExactInLibrary<int>;
template struct ExactInLibrary<double>;
