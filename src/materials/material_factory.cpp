#include "materials/material.h"

namespace CorvaneCore {

// Ids 2 to 14 name the wrapper, linked and reference materials; they give null until those
// classes join this table.
std::shared_ptr<BaseMaterial> createMaterial(int id) {
    switch (id) {
        case MaterialSingleBRDF::kType:
            return std::make_shared<MaterialSingleBRDF>();
        case MaterialLayeredBRDF::kType:
            return std::make_shared<MaterialLayeredBRDF>();
        default:
            return nullptr;
    }
}

}  // namespace CorvaneCore
