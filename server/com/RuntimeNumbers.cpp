#include "server/com/RuntimeNumbers.h"

namespace server {

namespace {

struct RuntimeNumber {
    HRESULT result;
    host::ErrorNumber number;
    std::string_view description;
};

/// The numbers are those that VBScript's `Err.Number` shows, the descriptions Visual Basic's.
constexpr RuntimeNumber table[] = {
    {E_INVALIDARG, 5, "无效的过程调用或参数"},
    {DISP_E_OVERFLOW, 6, "溢出"},
    {E_OUTOFMEMORY, 7, "内存溢出"},
    {DISP_E_BADINDEX, 9, "下标越界"},
    {DISP_E_ARRAYISLOCKED, 10, "该数组被固定或暂时锁定"},
    {DISP_E_DIVBYZERO, 11, "除数为零"},
    {DISP_E_TYPEMISMATCH, 13, "类型不匹配"},
    {E_ACCESSDENIED, 70, "拒绝的权限"},
    {REGDB_E_CLASSNOTREG, 429, "ActiveX 部件不能创建对象"},
    {CO_E_CLASSSTRING, 429, "ActiveX 部件不能创建对象"},
    {CLASS_E_CLASSNOTAVAILABLE, 429, "ActiveX 部件不能创建对象"},
    {CO_E_DLLNOTFOUND, 429, "ActiveX 部件不能创建对象"},
    {E_NOINTERFACE, 430, "类不支持自动化或不支持期望的接口"},
    {DISP_E_MEMBERNOTFOUND, 438, "对象不支持该属性或方法"},
    {DISP_E_UNKNOWNNAME, 438, "对象不支持该属性或方法"},
    {E_NOTIMPL, 445, "对象不支持该动作"},
    {DISP_E_NONAMEDARGS, 446, "对象不支持命名参数"},
    {DISP_E_UNKNOWNLCID, 447, "对象不支持当前的本地设置"},
    {DISP_E_PARAMNOTFOUND, 448, "未找到命名参数"},
    {DISP_E_PARAMNOTOPTIONAL, 449, "参数不可选"},
    {DISP_E_BADPARAMCOUNT, 450, "错误的参数号或无效的属性赋值"},
    {DISP_E_NOTACOLLECTION, 451, "对象不是集合"},
    {DISP_E_BADVARTYPE, 458, "变量使用了一个不支持的自动化类型"},
    {HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE), 462, "远程服务器不存在或不可用"},
};

} // namespace

std::optional<host::ErrorNumber> RuntimeNumberOf(HRESULT result) noexcept {
    for (const RuntimeNumber& each : table) {
        if (each.result == result)
            return each.number;
    }
    return std::nullopt;
}

std::string_view RuntimeNumberDescription(host::ErrorNumber number) noexcept {
    for (const RuntimeNumber& each : table) {
        if (each.number == number)
            return each.description;
    }
    return {};
}

} // namespace server
