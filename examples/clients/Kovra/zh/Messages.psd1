ConvertFrom-StringData @'
    Import      = 导入 {0} 行（{1}）
    Refused     = 请求整体被拒绝（{0}）：{1}
    NotCreated  = 在这个 {1} 位进程中无法创建 {0}：{2} 用 kovra doctor 查看注册了什么。
    NotXml      = “{0}”不是 XML：{1}
    Emptied     = 操作 EMPTY 已完成。
'@
