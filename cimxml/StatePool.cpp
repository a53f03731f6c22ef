// TStatePool: free lists per block size, and the pool's end once nobody needs it.
#include "cimxml/StatePool.h"

#include "cimxml/CIMXMLParser.h"

#include <new>

#if defined(__has_include)
#if __has_include(<sanitizer/asan_interface.h>)
#include <sanitizer/asan_interface.h>
#endif
#endif
// A block on a free list stays poisoned but for its link, so that the address sanitizer still
// catches a state used after its pop.
#ifndef ASAN_POISON_MEMORY_REGION
#define ASAN_POISON_MEMORY_REGION(address, size) ((void)(address), (void)(size))
#define ASAN_UNPOISON_MEMORY_REGION(address, size) ((void)(address), (void)(size))
#endif

namespace NQRN20 {

void* TStatePool::Allocate(size_t size) {
    const size_t list = ListOf(size);
    void* block;
    if (list >= kListCount) {
        block = ::operator new(size);
    } else if (m_free[list] != nullptr) {
        TFreeBlock* head = m_free[list];
        ASAN_UNPOISON_MEMORY_REGION(head, (list + 1) * kGranule);
        m_free[list] = head->m_next;
        block = head;
    } else {
        block = ::operator new((list + 1) * kGranule);
    }
    ++m_blocksOut;
    return block;
}

void TStatePool::Release(void* block, size_t size) {
    const size_t list = ListOf(size);
    if (list >= kListCount) {
        ::operator delete(block);
    } else {
        TFreeBlock* freed = static_cast<TFreeBlock*>(block);
        freed->m_next = m_free[list];
        m_free[list] = freed;
        ASAN_POISON_MEMORY_REGION(reinterpret_cast<char*>(freed) + sizeof(TFreeBlock),
                                  (list + 1) * kGranule - sizeof(TFreeBlock));
    }
    --m_blocksOut;
    FreeIfUnused();
}

void TStatePool::Detach() {
    m_attached = false;
    FreeIfUnused();
}

void TStatePool::FreeIfUnused() {
    if (!m_attached && m_blocksOut == 0) {
        delete this;
    }
}

TStatePool::~TStatePool() {
    for (size_t list = 0; list < kListCount; ++list) {
        while (m_free[list] != nullptr) {
            TFreeBlock* block = m_free[list];
            ASAN_UNPOISON_MEMORY_REGION(block, (list + 1) * kGranule);
            m_free[list] = block->m_next;
            ::operator delete(block);
        }
    }
}

TStatePoolHandle::TStatePoolHandle() : m_pool(new TStatePool) {}

TStatePoolHandle::TStatePoolHandle(const TStatePoolHandle&) : TStatePoolHandle() {}

TStatePoolHandle::~TStatePoolHandle() {
    m_pool->Detach();
}

} // namespace NQRN20
