// AssetXmlWriter: the one path by which XML leaves the system. It appends fixed text to a wide
// string and keeps the indentation depth; scene classes choose which operations to call.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <variant>

#include "archive/value_types.h"

namespace CorvaneCore {
class BaseTexture;
class BaseMaterial;
class BaseUVW;
class BaseCamera;
class BaseBitmap;
class BaseLight;

// A plugin-valued parameter: a pointer into one of the six families, or nothing at all.
using PluginRef =
    std::variant<std::monostate, std::shared_ptr<BaseTexture>, std::shared_ptr<BaseMaterial>,
                 std::shared_ptr<BaseUVW>, std::shared_ptr<BaseCamera>,
                 std::shared_ptr<BaseBitmap>, std::shared_ptr<BaseLight>>;

// Thrown by writePlugin for a reference that holds none of the six families.
constexpr int kNoPluginFamily = 20;

// The twelve numbers of a decomposed placement, in output order.
struct ComponentValues {
    float rotation[3] = {0, 0, 0};
    float scale[3] = {1, 1, 1};
    float offset[3] = {0, 0, 0};
    int32_t mirror[3] = {0, 0, 0};
};
}  // namespace CorvaneCore

class AssetXmlWriter {
public:
    using Color = CorvaneCore::Color;
    using AColor = CorvaneCore::AColor;
    using Vector = CorvaneCore::Vector;
    using Matrix = CorvaneCore::Matrix;
    using Transform = CorvaneCore::Transform;

    explicit AssetXmlWriter(std::wstring& stream) : stream_(stream) {}

    std::wstring& stream() { return stream_; }
    int32_t depth() const { return depth_; }
    int32_t targetHost = 0;  // 0: the modelling host every conversion targets
    std::map<std::wstring, std::wstring> sunUrls;  // sun id to the URL it was written under

    // Structure.
    void openRoot(const std::wstring& tag);
    void closeRoot();
    void openElement(const std::wstring& name);
    void closeElement(const std::wstring& name);
    void openAssets() { openElement(L"Assets"); }
    void closeAssets() { closeElement(L"Assets"); }
    void beginAsset(const std::wstring& url, const std::wstring& kind, const std::wstring& layout);
    void endAsset();
    void beginPlugin(const std::wstring& name, const std::wstring& kind);
    void endPlugin();
    void beginParameters();
    void endParameters();
    void beginParameter(const std::wstring& name, const std::wstring& type,
                        const std::wstring& label, const std::wstring& listType, bool isUserData,
                        const std::wstring& handler);
    void endParameter();

    // Values; an empty label means the name is used as label.
    void writeFloat(const std::wstring& name, float value, const std::wstring& label = L"",
                    bool isUserData = false);
    void writeInteger(const std::wstring& name, int32_t value, const std::wstring& label = L"",
                      bool isUserData = false);
    void writeBool(const std::wstring& name, bool value, const std::wstring& label = L"",
                   bool isUserData = false);
    void writeString(const std::wstring& name, const std::wstring& value,
                     const std::wstring& label = L"", bool isUserData = false);
    void writeFile(const std::wstring& name, const std::wstring& value,
                   const std::wstring& label = L"", bool isUserData = false);
    void writeVector(const std::wstring& name, const Vector& value, const std::wstring& label = L"");
    void writeColor(const std::wstring& name, const Color& value, const std::wstring& label = L"");
    void writeAColor(const std::wstring& name, const AColor& value,
                     const std::wstring& label = L"");
    void writeMatrix(const std::wstring& name, const Matrix& value,
                     const std::wstring& label = L"");
    void writeTransform(const std::wstring& name, const Transform& value,
                        const std::wstring& label = L"");
    void writeComponentMatrix(const std::wstring& name, const CorvaneCore::ComponentValues& value,
                              const std::wstring& label = L"");
    void writeComponentTransform(const std::wstring& name,
                                 const CorvaneCore::ComponentValues& value,
                                 const std::wstring& label = L"");
    // Throws the integer kNoPluginFamily when `child` holds no family at all.
    void writePlugin(const std::wstring& name, const CorvaneCore::PluginRef& child,
                     const std::wstring& urlPrefix, const std::wstring& label = L"");
    void beginList(const std::wstring& name, const std::wstring& listType,
                   const std::wstring& label = L"");
    void writeEntry(const std::wstring& text);
    void writeStringEntry(const std::wstring& text);
    void endList();

    // Narrow overloads for names that are constants of the program; text is UTF-8.
    void writeFloat(const char* name, float value, const char* label = "", bool isUserData = false);
    void writeInteger(const char* name, int32_t value, const char* label = "",
                      bool isUserData = false);
    void writeBool(const char* name, bool value, const char* label = "", bool isUserData = false);
    void writeString(const char* name, const std::string& value, const char* label = "",
                     bool isUserData = false);
    void writeFile(const char* name, const std::string& value, const char* label = "",
                   bool isUserData = false);
    void writeVector(const char* name, const Vector& value, const char* label = "");
    void writeColor(const char* name, const Color& value, const char* label = "");
    void writeAColor(const char* name, const AColor& value, const char* label = "");
    void writeMatrix(const char* name, const Matrix& value, const char* label = "");
    void writeTransform(const char* name, const Transform& value, const char* label = "");
    void writeComponentMatrix(const char* name, const CorvaneCore::ComponentValues& value,
                              const char* label = "");
    void writeComponentTransform(const char* name, const CorvaneCore::ComponentValues& value,
                                 const char* label = "");
    void writePlugin(const char* name, const CorvaneCore::PluginRef& child,
                     const std::wstring& urlPrefix, const char* label = "");
    void beginList(const char* name, const char* listType, const char* label = "");

private:
    void indent();
    void put(const wchar_t* text) { stream_.append(text); }
    void put(const std::wstring& text) { stream_.append(text); }
    void putFloat(float value);
    void putInt(int64_t value);
    void beginValueParameter(const std::wstring& name, const wchar_t* type,
                             const std::wstring& label, bool isUserData = false,
                             const wchar_t* handler = L"default");
    void inlineValueOpen() { indent(), put(L"<value>"); }
    void inlineValueClose() { put(L"</value>\n"), endParameter(); }
    void blockOpen();
    void blockClose();
    void scalarLine(const wchar_t* tag, float value);
    void vectorElement(const Vector& v);
    void componentLines(const CorvaneCore::ComponentValues& value);

    std::wstring& stream_;
    int32_t depth_ = 0;
    std::wstring rootTag_;
};
