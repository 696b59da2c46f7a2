DELETE FROM VoucherTemplates WHERE cVouchType = N'48'
