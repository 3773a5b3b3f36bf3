#!/usr/bin/env bash
# make_pictures.sh FOLDER: picture files of every kind by ImageMagick and netpbm, and beside each of them what ImageMagick
# sees in it, as a PPM file. The names are those in picture_table.h.
set -euo pipefail
mkdir -p "$1"
cd "$1"
rm -f -- *.png *.jpg *.gif *.tif *.ppm *.pgm *.pbm

convert -size 61x43 -seed 1 plasma:red-blue -depth 8 color.ppm
ppmtopgm color.ppm >grey.pgm
pgmtopbm -threshold grey.pgm >black.pbm
pamdepth 65535 grey.pgm >deep.pgm 2>/dev/null
for colors in 2 4 16 200; do
    pnmquant "$colors" color.ppm 2>/dev/null >"colors$colors.ppm"
done
pgmramp -lr 61 43 >alpha.pgm

png() { pnmtopng "$@" 2>/dev/null; }
png -force black.pbm >grey1.png
for bits in 2 4; do
    pamdepth $(((1 << bits) - 1)) grey.pgm 2>/dev/null | png -force >"grey$bits.png"
done
png grey.pgm >grey8.png
png -force deep.pgm >grey16.png
png -alpha alpha.pgm grey.pgm >grey-alpha.png
png colors2.ppm >palette1.png
png colors4.ppm >palette2.png
png colors16.ppm >palette4.png
png colors200.ppm >palette8.png
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

for colors in 2 4 16 200; do
    convert "colors$colors.ppm" "colors$colors.gif"
done
convert color.ppm -colors 8 -interlace GIF interlaced.gif
convert colors4.ppm -alpha set -region 18x18+3+3 -channel A -evaluate set 0 transparent.gif
convert colors16.ppm grey.pgm animated.gif

tif() { convert "$@"; }
tif black.pbm -compress Group4 -units PixelsPerInch -density 300 group4.tif
tif black.pbm -compress Fax fax.tif
pamtotiff -none -minisblack black.pbm >grey1.tif 2>/dev/null
pamtotiff -lzw -miniswhite black.pbm >white1.tif 2>/dev/null
tif grey2.png -depth 2 -compress none grey2.tif
tif grey4.png -depth 4 -compress Zip grey4.tif
tif grey.pgm -compress RLE grey8.tif
tif deep.pgm -depth 16 -compress LZW grey16.tif
tif grey-alpha.png -depth 8 grey-alpha.tif
pamtotiff -none -indexbits=1 colors2.ppm >palette1.tif 2>/dev/null
pamtotiff -packbits -indexbits=4 colors16.ppm >palette4.tif 2>/dev/null
pamtotiff -lzw -indexbits=8 colors200.ppm >palette8.tif 2>/dev/null
tif color.ppm -compress none -define tiff:rows-per-strip=5 -units PixelsPerCentimeter -density 120x60 strips.tif
tif color.ppm -compress LZW -endian MSB lzw.tif
tif color.ppm -compress Zip zip.tif
tif color.ppm -compress JPEG jpeg.tif
tif color.ppm -interlace plane -compress none planes.tif
pamdepth 65535 color.ppm 2>/dev/null | tif - -depth 16 -compress none rgb16.tif
tif rgb-alpha.png -depth 8 rgb-alpha.tif
tif color.ppm -colorspace CMYK -depth 8 -compress none inks.tif
tif color.ppm -define tiff:tile-geometry=32x16 -compress none tiles.tif
tif grey.pgm -define tiff:tile-geometry=16x32 -compress LZW grey-tiles.tif
tif black.pbm -define tiff:tile-geometry=32x32 -depth 1 -type bilevel -compress none bit-tiles.tif
tif color.ppm grey.pgm pages.tif

for file in *.png *.jpg *.gif *.tif; do
    convert "${file}[0]" -background white -alpha remove -alpha off -depth 8 -type TrueColor "ppm:$file.ppm"
done
