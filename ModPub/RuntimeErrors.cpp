#include "ModPub/RuntimeErrors.h"

#include <string>
#include <utility>

namespace ModPub {

namespace {

namespace en = host::error_number;

constexpr std::pair<host::ErrorNumber, std::string_view> descriptions[] = {
    {en::invalidCall, "无效的过程调用或参数"},
    {en::overflow, "溢出"},
    {en::outOfMemory, "内存溢出"},
    {en::typeMismatch, "类型不匹配"},
    {en::userInterrupt, "出现用户中断"},
    {en::objectNotSet, "对象变量或 With 块变量未设置"},
    {en::invalidUseOfNull, "无效使用 Null"},
    {en::cannotCreateObject, "ActiveX 部件不能创建对象"},
    {en::noSuchMember, "对象不支持该属性或方法"},
};

} // namespace

std::string_view RuntimeErrorDescription(host::ErrorNumber number) noexcept {
    for (const auto& [known, description] : descriptions) {
        if (known == number)
            return description;
    }
    return "应用程序定义或对象定义错误";
}

void RaiseRuntimeError(host::ErrorNumber number) {
    throw host::Error(number, std::string(RuntimeErrorDescription(number)));
}

} // namespace ModPub
