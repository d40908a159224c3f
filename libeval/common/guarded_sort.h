// guarded_sort.h: a sort for comparisons that need not be an order.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace qel {

/// An unstable introspective sort that stays inside its range and ends whatever the comparison answers.
///
/// Quick sort around the median of three, insertion sort for short runs, heap sort when the budget of
/// divisions runs out. Given a strict weak order it sorts; given anything else the elements come out in
/// some order, none lost. std::sort would be free to leave its range. Elements should be cheap to copy.
template <class Element, class Less>
class CGuardedSort
{
public:
    CGuardedSort(std::vector<Element>& elements, const Less& less) : m_elements(elements), m_less(less) {}

    void Run()
    {
        int budget = 0;
        for (std::size_t count = m_elements.size(); count > 1; count /= 2)
            budget += 2;
        Divide(0, m_elements.size(), budget);
    }

private:
    static constexpr std::size_t kLongestRun = 32;

    void Divide(std::size_t first, std::size_t last, int budget)
    {
        for (; last - first > kLongestRun; --budget) {
            if (budget == 0)
                return HeapSort(first, last);
            const std::size_t middle = Partition(first, last);
            if (middle - first < last - middle) {
                Divide(first, middle, budget - 1);
                first = middle;
            } else {
                Divide(middle, last, budget - 1);
                last = middle;
            }
        }
        InsertionSort(first, last);
    }

    // Gives the start of the right part; neither part is empty. The bounds are tested beside every answer of
    // the comparison, since no element can be trusted to stop a scan.
    std::size_t Partition(std::size_t first, std::size_t last)
    {
        MoveMedianTo(first, last);
        const Element pivot = m_elements[first];
        std::size_t left = first + 1;
        std::size_t right = last - 1;
        for (;; ++left, --right) {
            while (left < right && m_less(m_elements[left], pivot))
                ++left;
            while (right > left && m_less(pivot, m_elements[right]))
                --right;
            if (left >= right)
                break;
            std::swap(m_elements[left], m_elements[right]);
        }
        const std::size_t end = m_less(m_elements[left], pivot) ? left + 1 : left;
        std::swap(m_elements[first], m_elements[end - 1]);
        return end < last ? end : last - 1;
    }

    void MoveMedianTo(std::size_t first, std::size_t last)
    {
        const std::size_t middle = first + (last - first) / 2;
        std::size_t low = middle;
        std::size_t high = last - 1;
        if (m_less(m_elements[high], m_elements[low]))
            std::swap(low, high);
        std::size_t median = first;
        if (m_less(m_elements[median], m_elements[low]))
            median = low;
        else if (m_less(m_elements[high], m_elements[median]))
            median = high;
        std::swap(m_elements[first], m_elements[median]);
    }

    void InsertionSort(std::size_t first, std::size_t last)
    {
        for (std::size_t next = first + 1; next < last; ++next) {
            Element element = std::move(m_elements[next]);
            std::size_t hole = next;
            for (; hole > first && m_less(element, m_elements[hole - 1]); --hole)
                m_elements[hole] = std::move(m_elements[hole - 1]);
            m_elements[hole] = std::move(element);
        }
    }

    void HeapSort(std::size_t first, std::size_t last)
    {
        const std::size_t count = last - first;
        for (std::size_t root = count / 2; root > 0; --root)
            SiftDown(first, root - 1, count);
        for (std::size_t end = count - 1; end > 0; --end) {
            std::swap(m_elements[first], m_elements[first + end]);
            SiftDown(first, 0, end);
        }
    }

    void SiftDown(std::size_t first, std::size_t root, std::size_t count)
    {
        for (std::size_t child = 2 * root + 1; child < count; child = 2 * root + 1) {
            if (child + 1 < count && m_less(m_elements[first + child], m_elements[first + child + 1]))
                ++child;
            if (!m_less(m_elements[first + root], m_elements[first + child]))
                return;
            std::swap(m_elements[first + root], m_elements[first + child]);
            root = child;
        }
    }

    std::vector<Element>& m_elements;
    const Less& m_less;
};

/// Sorts all elements as CGuardedSort tells.
template <class Element, class Less>
void GuardedSort(std::vector<Element>& elements, const Less& less)
{
    CGuardedSort<Element, Less>(elements, less).Run();
}

} // namespace qel
