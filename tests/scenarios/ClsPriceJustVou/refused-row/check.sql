SELECT COUNT(*) AS vouchers FROM CostJustVouch
