# Prints a long list of orders as comma-separated values. The same number of rows always gives the same list:
#   awk -v rows=50000 -f make-orders.awk
# The list contains every kind of field: plain, quoted, with doubled quotes, with line breaks, empty, and non-ASCII.
function random(n) {
    seed = (seed * 16807) % 2147483647
    return seed % n
}
BEGIN {
    seed = 20240229
    names = split("Müller|Dubois|O'Neill|Nakamura|Wójcik|Svensson|García|Smith", name, "|")
    cities = split("Berlin|Lyon|Cork|大阪|Kraków|Malmö|Sevilla|Leeds", city, "|")
    goods = split("Lamp|\"Chair, oak\"|\"Screw 3/4\"\"\"|Table|\"Rug \"\"Isfahan\"\"\"|Clock|\"Box, small\"|Shelf", good, "|")
    notes = split("|fragile|\"call before delivery\"|\"leave at the door,\nplease\"||gift|\"said \"\"soon\"\"\"|", note, "|")
    print "Order,Date,Customer,City,Article,Quantity,Price,Remark"
    for (row = 1; row <= rows; row++)
        printf "%d,2024-%02d-%02d,%s,%s,%s,%d,%d.%02d,%s\n", 100000 + row, 1 + random(12), 1 + random(28),
            name[1 + random(names)], city[1 + random(cities)], good[1 + random(goods)], 1 + random(20),
            random(500), random(100), note[1 + random(notes)]
}
