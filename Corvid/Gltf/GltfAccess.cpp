#include "Corvid/Gltf/GltfAccess.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace Corvid {

namespace {

std::size_t SizeOf(GltfComponent component) {
    switch (component) {
    case GltfComponent::Int8:
    case GltfComponent::UInt8:
        return 1;
    case GltfComponent::Int16:
    case GltfComponent::UInt16:
        return 2;
    case GltfComponent::UInt32:
    case GltfComponent::Float:
        return 4;
    }
    return 0; // the file has another number
}

// Files are little-endian.
template <class Number> Number NumberAt(const unsigned char* bytes) {
    Number number;
    std::memcpy(&number, bytes, sizeof number);
    static_assert(std::endian::native == std::endian::little);
    return number;
}

float FloatAt(const unsigned char* bytes, GltfComponent component, bool isNormalized) {
    const auto scaled = [&](auto number, float largest) {
        const float value = static_cast<float>(number);
        return isNormalized ? std::max(value / largest, -1.0f) : value;
    };
    switch (component) {
    case GltfComponent::Int8:
        return scaled(NumberAt<std::int8_t>(bytes), 127.0f);
    case GltfComponent::UInt8:
        return scaled(*bytes, 255.0f);
    case GltfComponent::Int16:
        return scaled(NumberAt<std::int16_t>(bytes), 32767.0f);
    case GltfComponent::UInt16:
        return scaled(NumberAt<std::uint16_t>(bytes), 65535.0f);
    case GltfComponent::UInt32:
        return static_cast<float>(NumberAt<std::uint32_t>(bytes));
    case GltfComponent::Float:
        return NumberAt<float>(bytes);
    }
    return 0.0f;
}

bool IsIndex(GltfComponent component) {
    return component == GltfComponent::UInt8 || component == GltfComponent::UInt16 ||
           component == GltfComponent::UInt32;
}

std::uint32_t IndexAt(const unsigned char* bytes, GltfComponent component) {
    return component == GltfComponent::UInt8    ? *bytes
           : component == GltfComponent::UInt16 ? NumberAt<std::uint16_t>(bytes)
                                                : NumberAt<std::uint32_t>(bytes);
}

} // namespace

const GltfAccessor* GltfAccess::Find(int accessor) const {
    const bool isThere = accessor >= 0 && static_cast<std::size_t>(accessor) < m_Document.m_Accessors.size();
    return isThere ? &m_Document.m_Accessors[static_cast<std::size_t>(accessor)] : nullptr;
}

bool GltfAccess::Locate(int view, std::size_t offset, std::size_t elementSize, std::size_t count, Elements& elements,
                        std::string& error) const {
    if (view < 0 || static_cast<std::size_t>(view) >= m_Document.m_Views.size()) {
        error = "there is no buffer view " + std::to_string(view);
        return false;
    }
    const GltfBufferView& place = m_Document.m_Views[static_cast<std::size_t>(view)];
    const bool hasBuffer =
        place.m_Buffer >= 0 && static_cast<std::size_t>(place.m_Buffer) < m_Document.m_Buffers.size();
    const std::size_t size = hasBuffer ? m_Document.m_Buffers[static_cast<std::size_t>(place.m_Buffer)].size() : 0;
    if (place.m_Offset > size || place.m_Length > size - place.m_Offset) {
        error = "buffer view " + std::to_string(view) + " reaches beyond its buffer";
        return false;
    }
    elements.m_Stride = place.m_Stride != 0 ? place.m_Stride : elementSize;
    if (elements.m_Stride < elementSize) {
        error = "the elements in buffer view " + std::to_string(view) + " overlap";
        return false;
    }
    const bool fits = offset <= place.m_Length && elementSize <= place.m_Length - offset &&
                      count - 1 <= (place.m_Length - offset - elementSize) / elements.m_Stride;
    if (count != 0 && !fits) {
        error =
            std::to_string(count) + " elements wanted of buffer view " + std::to_string(view) + ", which ends before";
        return false;
    }
    if (count != 0)
        elements.m_Bytes =
            m_Document.m_Buffers[static_cast<std::size_t>(place.m_Buffer)].data() + place.m_Offset + offset;
    return true;
}

bool GltfAccess::Gather(const GltfAccessor& accessor, std::size_t maxCount, std::vector<unsigned char>& bytes,
                        std::string& error) const {
    const std::size_t size = SizeOf(accessor.m_Component) * static_cast<std::size_t>(accessor.m_Width);
    if (size == 0) {
        error = "its elements are of a type that is not expected";
        return false;
    }
    if (accessor.m_Count > maxCount) {
        error = "it states " + std::to_string(accessor.m_Count) + " elements, more than the file can hold";
        return false;
    }
    Elements elements;
    if (accessor.m_View != kGltfNone &&
        !Locate(accessor.m_View, accessor.m_Offset, size, accessor.m_Count, elements, error))
        return false;
    bytes.assign(accessor.m_Count * size, 0);
    for (std::size_t i = 0; elements.m_Bytes != nullptr && i < accessor.m_Count; ++i)
        std::memcpy(bytes.data() + i * size, elements.m_Bytes + i * elements.m_Stride, size);
    return !accessor.m_Sparse || Replace(accessor, bytes, error);
}

bool GltfAccess::Replace(const GltfAccessor& accessor, std::vector<unsigned char>& bytes, std::string& error) const {
    const GltfSparse& sparse = *accessor.m_Sparse;
    const std::size_t size = SizeOf(accessor.m_Component) * static_cast<std::size_t>(accessor.m_Width);
    const bool isSound = sparse.m_Count >= 0 && sparse.m_IndexOffset >= 0 && sparse.m_ValueOffset >= 0 &&
                         static_cast<std::size_t>(sparse.m_Count) <= accessor.m_Count &&
                         IsIndex(sparse.m_IndexComponent);
    if (!isSound) {
        error = "its sparse elements are not described right";
        return false;
    }
    const auto count = static_cast<std::size_t>(sparse.m_Count);
    Elements indices, values;
    if (!Locate(sparse.m_IndexView, static_cast<std::size_t>(sparse.m_IndexOffset), SizeOf(sparse.m_IndexComponent),
                count, indices, error) ||
        !Locate(sparse.m_ValueView, static_cast<std::size_t>(sparse.m_ValueOffset), size, count, values, error))
        return false;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t index = IndexAt(indices.m_Bytes + i * indices.m_Stride, sparse.m_IndexComponent);
        if (index >= accessor.m_Count) {
            error = "its sparse element " + std::to_string(i) + " has the index " + std::to_string(index) + " of " +
                    std::to_string(accessor.m_Count);
            return false;
        }
        std::memcpy(bytes.data() + index * size, values.m_Bytes + i * values.m_Stride, size);
    }
    return true;
}

bool GltfAccess::ReadFloats(int index, int width, std::size_t maxCount, std::vector<float>& values,
                            std::string& error) const {
    const GltfAccessor* accessor = Find(index);
    std::vector<unsigned char> bytes;
    if (accessor == nullptr)
        error = "it does not exist";
    else if (accessor->m_Width != width)
        error = std::to_string(width) + " components wanted";
    else if (Gather(*accessor, maxCount, bytes, error)) {
        const std::size_t size = SizeOf(accessor->m_Component);
        values.resize(bytes.size() / size);
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = FloatAt(bytes.data() + i * size, accessor->m_Component, accessor->m_IsNormalized);
        return true;
    }
    error = "accessor " + std::to_string(index) + ": " + error;
    return false;
}

bool GltfAccess::ReadIndices(int index, std::size_t maxCount, std::vector<std::uint32_t>& values,
                             std::string& error) const {
    const GltfAccessor* accessor = Find(index);
    std::vector<unsigned char> bytes;
    if (accessor == nullptr)
        error = "it does not exist";
    else if (accessor->m_Width != 1 || !IsIndex(accessor->m_Component))
        error = "its elements are no indices";
    else if (Gather(*accessor, maxCount, bytes, error)) {
        const std::size_t size = SizeOf(accessor->m_Component);
        values.resize(bytes.size() / size);
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = IndexAt(bytes.data() + i * size, accessor->m_Component);
        return true;
    }
    error = "accessor " + std::to_string(index) + ": " + error;
    return false;
}

bool GltfAccess::ReadWords(int index, std::size_t count, std::vector<std::uint32_t>& values) const {
    const GltfAccessor* accessor = Find(index);
    std::vector<unsigned char> bytes;
    std::string error;
    if (accessor == nullptr || accessor->m_Width != 2 || accessor->m_Component != GltfComponent::UInt16 ||
        accessor->m_Count != count || !Gather(*accessor, count, bytes, error))
        return false;
    values.resize(count);
    for (std::size_t i = 0; i < count; ++i)
        values[i] = NumberAt<std::uint32_t>(bytes.data() + i * 4);
    return true;
}

} // namespace Corvid
