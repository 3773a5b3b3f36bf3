#!/usr/bin/env bash
# make_pictures.sh FOLDER: picture files of every kind by ImageMagick and netpbm, and beside each of them what ImageMagick
# sees in it, as a PPM file. The names are those in picture_table.h.
set -euo pipefail
mkdir -p "$1"
cd "$1"
rm -f -- *.png *.jpg *.gif *.tif *.ppm *.pgm *.pbm

png() { pnmtopng "$@" 2>/dev/null; }
convert -size 61x43 -seed 1 plasma:red-blue -depth 8 color.ppm
ppmtopgm color.ppm >grey.pgm
pgmtopbm grey.pgm >black.pbm
pgmramp -lr 61 43 >alpha.pgm
for bits in 1 2 4 8 16; do
    pamdepth $(((1 << bits) - 1)) grey.pgm 2>/dev/null | png -force >"grey$bits.png"
done
for kind in 1:2 2:4 4:16 8:200; do
    colors=${kind#*:}
    pnmquant "$colors" color.ppm 2>/dev/null >"colors$colors.ppm"
    png "colors$colors.ppm" >"palette${kind%:*}.png"
    convert "colors$colors.ppm" "colors$colors.gif"
done
png -alpha alpha.pgm grey.pgm >grey-alpha.png
png -alpha alpha.pgm colors4.ppm >palette-alpha.png
convert color.ppm -density 300x150 -units PixelsPerInch rgb8.png
pamdepth 65535 color.ppm 2>/dev/null | png -force >rgb16.png
png -alpha alpha.pgm color.ppm >rgb-alpha.png
png -interlace color.ppm >interlaced.png
png -interlace -alpha alpha.pgm color.ppm >interlaced-alpha.png
pamdepth 15 grey.pgm 2>/dev/null | png -force -transparent 'rgb:22/22/22' >grey-transparent.png

convert color.ppm -quality 85 -density 150 -units PixelsPerInch rgb.jpg
convert color.ppm -sampling-factor 4:4:4 -quality 95 -density 100 -units PixelsPerCentimeter full.jpg
convert grey.pgm grey.jpg
convert color.ppm -interlace JPEG -define jpeg:optimize-coding=true progressive.jpg
convert color.ppm -colorspace CMYK inks.jpg

convert color.ppm -colors 8 -interlace GIF interlaced.gif
convert colors4.ppm -alpha set -region 18x18+3+3 -channel A -evaluate set 0 transparent.gif
convert colors16.ppm grey.pgm animated.gif
convert colors16.ppm -fill white -draw 'point 20,20' -crop 30x20+9+7 framed.gif
convert colors200.ppm -crop 40x20+21+23 framed-colors.gif

number=2
for side in TopRight BottomRight BottomLeft LeftTop RightTop RightBottom LeftBottom; do
    convert black.pbm -orient $side "turned$number.tif"
    number=$((number + 1))
done
convert color.ppm -orient RightTop -compress LZW -units PixelsPerInch -density 300x150 turned-colors.tif

convert black.pbm -compress Group4 -units PixelsPerInch -density 300 group4.tif
convert black.pbm -compress Fax fax.tif
pamtotiff -none -minisblack black.pbm >grey1.tif 2>/dev/null
pamtotiff -lzw -miniswhite black.pbm >white1.tif 2>/dev/null
convert grey2.png -depth 2 -compress none grey2.tif
convert grey4.png -depth 4 -compress Zip grey4.tif
convert grey.pgm -compress RLE grey8.tif
convert grey16.png -depth 16 -compress LZW grey16.tif
convert grey-alpha.png -depth 8 grey-alpha.tif
pamtotiff -none -indexbits=1 colors2.ppm >palette1.tif 2>/dev/null
pamtotiff -packbits -indexbits=4 colors16.ppm >palette4.tif 2>/dev/null
pamtotiff -lzw -indexbits=8 colors200.ppm >palette8.tif 2>/dev/null
convert color.ppm -compress none -define tiff:rows-per-strip=5 -units PixelsPerCentimeter -density 120x60 strips.tif
convert color.ppm -compress LZW -endian MSB lzw.tif
convert color.ppm -compress Zip zip.tif
convert color.ppm -compress JPEG jpeg.tif
convert color.ppm -interlace plane -compress none planes.tif
pamdepth 65535 color.ppm 2>/dev/null | convert - -depth 16 -compress none rgb16.tif
convert rgb-alpha.png -depth 8 rgb-alpha.tif
convert color.ppm -colorspace CMYK -depth 8 -compress none inks.tif
convert color.ppm -define tiff:tile-geometry=32x16 -compress none tiles.tif
convert grey.pgm -define tiff:tile-geometry=16x32 -compress LZW grey-tiles.tif
convert black.pbm -define tiff:tile-geometry=32x32 -depth 1 -type bilevel -compress none bit-tiles.tif
convert color.ppm grey.pgm pages.tif

for file in *.png *.jpg *.gif *.tif; do
    show=(-background white -flatten -alpha off -depth 8 -type TrueColor)
    [[ $file == *.gif ]] || show=(-auto-orient +repage "${show[@]}") # only GIF files have a screen
    convert "${file}[0]" "${show[@]}" "ppm:$file.ppm"
    convert "${file}[0]" -channel RGB -negate +channel "${show[@]}" "ppm:$file.not.ppm"
done
