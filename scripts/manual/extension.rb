# What the manual asks of asciidoctor-pdf beside a theme: pictures of one scale, warnings in one piece, an index in the
# order of the alphabet.
require 'asciidoctor/pdf'

# A picture without a width of its own gets one by its size, so that the letters of all windows are alike on paper, but
# never more than the page has. Pictures are taken at two dots for each of the screen's.
class PictureWidths < Asciidoctor::Extensions::TreeProcessor
  POINTS_PER_DOT = 0.3
  WIDEST = 170 / 25.4 * 72
  HIGHEST = 200 / 25.4 * 72

  def process(document)
    document.find_by(context: :image) { |image| !image.attr?('pdfwidth') }.each do |image|
      path = image.image_uri(image.attr('target'))
      next unless File.file?(path)

      width, height = File.binread(path, 8, 16).unpack('NN')
      scale = [POINTS_PER_DOT, WIDEST / width, HIGHEST / height].min
      image.set_attr('pdfwidth', "#{(width * scale).floor(2)}pt")
    end
    nil
  end
end

# A warning stays on one page, with its sign beside all of it.
class WholeWarnings < Asciidoctor::Extensions::TreeProcessor
  def process(document)
    document.find_by(context: :admonition).each { |warning| warning.set_option('unbreakable') }
    nil
  end
end

Asciidoctor::Extensions.register do
  tree_processor PictureWidths
  tree_processor WholeWarnings
end

# Cyrillic letters of either case stand together.
Asciidoctor::PDF::IndexTermGroup.class_eval do
  def <=>(other)
    [name.downcase.tr('ё', 'е'), name] <=> [other.name.downcase.tr('ё', 'е'), other.name]
  end
end

# The end of a line of a listing is looked for in no font.
Prawn::Text::Formatted::Box.prepend(Module.new do
  def find_font_for_this_glyph(char, font, *rest)
    char == "\n" ? font : super
  end
end)
