#include "Corvid/Content/FiniteValues.h"

#include <algorithm>
#include <cmath>

#include "Corvid/Values/ValuePaths.h"

namespace Corvid {

void AddNotFinite(DiagnosticLog& log, std::string field, double value) {
    log.Add(DiagnosticCode::NotFinite, {}, std::move(field),
            std::isnan(value) ? "not a number"
            : value > 0.0     ? "infinite"
                              : "infinite, below zero");
}

void CheckFiniteValues(const ValueTree& values, DiagnosticLog& log) {
    for (ValuePaths paths(values); !paths.IsAtEnd(); paths.Next()) {
        const ValueNode& node = paths.GetNode();
        const auto check = [&](double value) {
            if (!std::isfinite(value))
                AddNotFinite(log, paths.GetPath(), value);
        };
        switch (node.m_Kind) {
        case ValueKind::Float:
            check(static_cast<double>(values.GetFloat(node)));
            break;
        case ValueKind::Double:
            check(values.GetDouble(node));
            break;
        case ValueKind::Color:
        case ValueKind::Vector3:
        case ValueKind::Vector4:
        case ValueKind::Matrix33:
        case ValueKind::Matrix44: {
            const auto floats = values.GetFloats(node);
            const auto odd =
                std::find_if(floats.begin(), floats.end(), [](float each) { return !std::isfinite(each); });
            if (odd != floats.end())
                check(static_cast<double>(*odd));
            break;
        }
        default:
            break;
        }
    }
}

} // namespace Corvid
