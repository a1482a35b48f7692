local function fib(n) if n < 2 then return n end return fib(n - 1) + fib(n - 2) end
local rows = {}
function rows.fib() return fib(25) end
function rows.setq() i = 0 for _ = 1, 1000000 do i = i + 1 end end
local function cons(a, b) return {a, b} end
function rows.lists()
  local items
  for i = 0, 1999 do items = cons(cons(i, i * i), items) end
  local found = 0
  for i = 0, 1999, 5 do
    local at = items
    while at do
      if at[1][1] == i then found = found + 1 break end
      at = at[2]
    end
  end
  for _ = 1, 50 do
    local reversed, at = nil, items
    while at do reversed = cons(cons(at[1][1], at[1][2] + 1), reversed) at = at[2] end
    items = reversed
  end
  return found
end
function rows.strings()
  local text, hits = "", 0
  for i = 0, 3999 do text = text .. tostring(i) .. "," end
  for i = 0, 999 do if string.find(text, tostring(i) .. ",", 1, true) then hits = hits + 1 end end
  return hits
end
function rows.sort()
  local x, l = 12345, {}
  for i = 1, 20000 do x = (x * 1103 + 12345) % 1000003 l[i] = x end
  table.sort(l, function(a, b) return a < b end)
  return #l
end
-- As a Lua program lengthens a text piece by piece.
function rows.lengthen()
  local parts = {}
  for i = 1, 40000 do parts[i] = "abc," end
  return #table.concat(parts)
end
local row = rows[os.getenv("ROW")]
for _ = 1, tonumber(os.getenv("TIMES")) do if row then row() end end
